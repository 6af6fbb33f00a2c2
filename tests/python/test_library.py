import ctypes
import pathlib
import re
import unittest

from oxlume import _library

HEADERS = pathlib.Path(__file__).parents[2] / "include" / "oxlume"

# What is passed by value, by its name in C.
VALUES = {
    "void": None,
    "int32_t": ctypes.c_int32,
    "uint32_t": ctypes.c_uint32,
    "uint8_t": ctypes.c_uint8,
    "size_t": ctypes.c_size_t,
    "double": ctypes.c_double,
    "LxPointD": _library.PointD,
    "LxRectL": _library.RectL,
    "LxRectD": _library.RectD,
    "LxMatrix": _library.MatrixRecord,
    "LxColor": _library.ColorRecord,
    "LxBlend": _library.BlendRecord,
    "LxRGBA": _library.Rgba,
    "LxMorphLine": _library.MorphLineRecord,
    "LxSheenLight": _library.LightRecord,
    "LxPathInfo": _library.PathInfoRecord,
    "LxPathCallback": ctypes.c_void_p,
}


def declarations():
    """The result and the arguments of every function of the headers, as written in C."""
    found = {}
    for header in HEADERS.glob("*.h"):
        text = re.sub(r"/\*.*?\*/", " ", header.read_text(), flags=re.S)
        pattern = r"LX_API\s+([\w\s*]+?)(\w+)\(([^()]*)\)\s*(?:LX_EXPORTED_AS\(\"(\w+)\"\))?\s*;"
        for result, name, arguments, exported in re.findall(pattern, text):
            listed = [] if arguments.strip() == "void" else arguments.split(",")
            found[exported or name] = [result] + [re.sub(r"\w+(\[\d*\])?\s*$", "", part) for part in listed]
    return found


def fits(written, declared):
    """Whether a type of the package's prototypes can stand for one that is written in C."""
    words = [word for word in re.findall(r"\w+|\*", written) if word not in ("const", "struct")]
    if words[-1] != "*":
        return VALUES[words[0]] is declared
    if declared is ctypes.c_void_p:
        return True
    if words[0] == "char":
        return declared is ctypes.c_char_p
    return words[1:] == ["*"] and declared is ctypes.POINTER(VALUES[words[0]])


class LibraryTest(unittest.TestCase):
    def test_prototypes_are_those_of_the_headers(self):
        written = declarations()
        names = [line.split()[0] for line in _library._PROTOTYPES.split("\n") if line.strip()]
        self.assertGreater(len(names), 100)
        self.assertEqual(len(names), len(set(names)))
        for name in names:
            function = getattr(_library.lib, name)
            types = [function.restype] + function.argtypes
            self.assertEqual(len(types), len(written[name]), name)
            for place, (c_type, declared) in enumerate(zip(written[name], types)):
                self.assertTrue(fits(c_type, declared), f"{name}, {place}: {c_type} and {declared}")

    def test_records_have_the_sizes_of_the_boundary(self):
        sizes = {
            _library.PointD: 16,
            _library.RectL: 16,
            _library.RectD: 32,
            _library.MatrixRecord: 72,
            _library.Rgba: 4,
            _library.ColorRecord: 8,
            _library.BlendRecord: 8 + ctypes.sizeof(ctypes.c_void_p),
            _library.MorphLineRecord: 32,
            _library.LightRecord: 80,
            _library.PathInfoRecord: 36,
        }
        for record, size in sizes.items():
            self.assertEqual(ctypes.sizeof(record), size, record.__doc__)


if __name__ == "__main__":
    unittest.main()
