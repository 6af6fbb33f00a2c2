"""test_checks.py TOOLS: what checks the pages finds what is wrong with them."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOOLS = Path(sys.argv.pop(1))
PICTURE = b"\x89PNG\r\n\x1a\n"


class CheckPages(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory()
        self.folder = Path(self.temporary.name)
        (self.folder / "other.html").write_text('<h1 id="place">Other</h1>')
        (self.folder / "good.png").write_bytes(PICTURE)
        (self.folder / "text.png").write_text("no picture")

    def tearDown(self):
        self.temporary.cleanup()

    def found(self, body):
        (self.folder / "page.html").write_text(body)
        done = subprocess.run([TOOLS / "check-pages", self.folder], capture_output=True, text=True)
        self.assertEqual(done.stderr, "")
        self.assertEqual(done.returncode, 1 if done.stdout else 0)
        return [line.split(": ", 1)[1] for line in done.stdout.splitlines()]

    def test_nothing_is_found_on_a_good_page(self):
        self.assertEqual(self.found('<a name="here"></a><img src="good.png"><a href="other.html#place">1</a>'
                                    '<a href="#here">2</a><a href="https://example.org/gone">3</a>'), [])

    def test_a_missing_picture(self):
        self.assertEqual(self.found('<img src="gone.png">'), ["nothing stands at gone.png"])

    def test_a_file_that_is_no_picture(self):
        self.assertEqual(self.found('<img src="text.png">'), ["text.png is no picture"])

    def test_a_dead_link(self):
        self.assertEqual(self.found('<a href="gone.html">1</a>'), ["nothing stands at gone.html"])

    def test_a_link_to_a_place_that_a_page_does_not_have(self):
        self.assertEqual(self.found('<a href="other.html#gone">1</a>'), ["no place other.html#gone"])

    def test_a_missing_script_and_style(self):
        self.assertEqual(self.found('<script src="a.js"></script><link href="b.css">'),
                         ["nothing stands at a.js", "nothing stands at b.css"])

    def test_a_folder_without_pages(self):
        with tempfile.TemporaryDirectory() as empty:
            self.assertEqual(subprocess.run([TOOLS / "check-pages", empty], capture_output=True).returncode, 1)

    def test_a_name_that_the_reference_lacks(self):
        exports, tags = self.folder / "map", self.folder / "tags"
        exports.write_text("/* LxNo_Name; */\nV {\n  global:\n    # Family\n    LxA_One;\n    LxA_Two;\n};\n")
        tags.write_text("<name>LxA_One</name>")
        done = subprocess.run([TOOLS / "check-pages", self.folder, "--exports", exports, tags], capture_output=True, text=True)
        self.assertEqual(done.stdout, f"{tags}: the reference does not have LxA_Two\n")


class CheckInBrowser(unittest.TestCase):
    def test_what_only_a_browser_sees(self):
        with tempfile.TemporaryDirectory() as folder:
            (Path(folder) / "broken.png").write_bytes(PICTURE)  # passes for a picture by its first bytes only
            (Path(folder) / "page.html").write_text(
                '<body><img src="broken.png"><script>document.body.insertAdjacentHTML("beforeend", "<a href=gone.html>1</a>");'
                'throw new Error("boom")</script>')
            done = subprocess.run([TOOLS / "check-in-browser", folder], capture_output=True, text=True)
        if done.returncode == 77:
            self.skipTest("no browser")
        self.assertEqual(done.returncode, 1)
        for part in ("Uncaught Error: boom", "a link to /gone.html", "/page.html: the picture broken.png does not show"):
            self.assertIn(part, done.stdout)


unittest.main()
