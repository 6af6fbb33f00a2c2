import gc
import os
import struct
import tempfile
import unittest
import weakref
import zlib

import oxlume
from oxlume import Blend, Channel, Image, Mode, PixelType
from support import needs_numpy, numpy, picture


class ImageTest(unittest.TestCase):
    def test_has_its_type_size_and_place(self):
        image = Image("rgb", 5, 2, x=10, y=20)
        self.assertEqual(image.type, PixelType.RGB)
        self.assertEqual((image.width, image.height), (5, 2))
        self.assertEqual(image.rect, (10, 20, 15, 22))
        self.assertEqual(image.row_bytes, 16)
        self.assertFalse(image.flipped)
        self.assertEqual(repr(image), "<Image RGB 5 x 2 at (10, 20)>")
        image.move_to(-1, 3)
        self.assertEqual(image.rect, (-1, 3, 4, 5))

    def test_refuses_sizes_and_types_that_make_no_sense(self):
        for width, height in ((0, 5), (5, 0), (-1, 5)):
            with self.assertRaises(ValueError):
                Image("RGBA", width, height)
        with self.assertRaises(ValueError):
            Image("CMYK", 4, 4)
        with self.assertRaises(ValueError):
            Image("A", 4, 4, x=0x7FFFFFFE)
        with self.assertRaises(MemoryError):
            Image("RGBA", 100000, 100000)

    def test_reads_and_writes_pixels_of_every_type(self):
        colors = {"A": 7, "RGB": (1, 2, 3), "RGBA": (1, 2, 3, 4), "FLOAT": 0.5, "LONG": -9}
        for flipped in (False, True):
            for name, color in colors.items():
                image = Image(name, 9, 7, flipped=flipped)
                image[3, 4] = color
                self.assertEqual(image[3, 4], color)
                self.assertNotEqual(image[3, 5], color)
                image.fill(color)
                self.assertEqual(image[8, 6], color)
                image.clear()
                self.assertNotEqual(image[8, 6], color)
        image = Image("RGBA", 2, 2)
        image[1, 1] = (5, 6, 7)
        self.assertEqual(image[1, 1], (5, 6, 7, 255))
        image[1, 1] = 9
        self.assertEqual(image[1, 1], (9, 9, 9, 255))

    def test_outside_there_are_no_pixels(self):
        image = Image("RGBA", 4, 3)
        for place in ((4, 0), (0, 3), (-1, 0), (0, -1)):
            with self.assertRaises(IndexError):
                image[place]
            with self.assertRaises(IndexError):
                image[place] = 0

    def test_refuses_colors_out_of_range(self):
        image = Image("RGBA", 4, 3)
        for color in (256, -1, (1, 2), (1, 2, 3, 4, 5), (0, 0, 300), (0.5, 0, 0)):
            with self.assertRaises(ValueError):
                image.fill(color)
        with self.assertRaises(ValueError):
            Image("A", 2, 2).fill((1, 2, 3))

    def test_blends(self):
        image = Image("RGBA", 10, 10)
        image.fill((100, 100, 100))
        red = Image("RGBA", 3, 3, x=5, y=5)
        red.fill((200, 0, 0))
        image.draw(red, Mode.SRC)
        self.assertEqual(image[5, 5], (200, 0, 0, 255))
        self.assertEqual(image[8, 7], (100, 100, 100, 255))
        red.move_to(0, 0)
        image.draw(red, Mode.SRC, limit=(0, 0, 1, 1))
        self.assertEqual((image[0, 0][0], image[1, 0][0]), (200, 100))
        mask = Image("A", 10, 10)
        mask[1, 1] = 255
        image.draw(red, mask=mask)
        self.assertEqual((image[1, 1][0], image[2, 2][0]), (200, 100))
        image.blend_pixel(9, 9, (1, 2, 3), Mode.SRC)
        self.assertEqual(image[9, 9], (1, 2, 3, 255))
        image.blend_pixel(10, 9, (1, 2, 3))
        image.blend_color((0, 0, 255), Blend(Mode.SRC, 255, Channel.RGBA))
        self.assertEqual(image[3, 3], (0, 0, 255, 255))
        with self.assertRaises(ValueError):
            image.blend_color(0, Blend(Mode.SRC, 256))

    def test_modes_and_channels_bear_the_librarys_names(self):
        for mode in Mode:
            self.assertEqual(mode.label.upper(), mode.name.replace("_", ""))
        self.assertEqual(len(Mode), 44)
        for channel in Channel:
            name = oxlume._library.lib.LxBlend_ChannelName(channel).decode()
            self.assertEqual(name.upper(), channel.name)

    def test_works_on_whole_images(self):
        image = picture("RGBA", 8, 4)
        corner = image[1, 0]
        image.flip_horizontal()
        self.assertEqual(image[6, 0], corner)
        image.flip_vertical()
        self.assertEqual(image[6, 3], corner)
        image.chequerboard(2, (1, 1, 1), (2, 2, 2))
        self.assertEqual((image[1, 1], image[2, 1]), ((1, 1, 1, 255), (2, 2, 2, 255)))
        image.add(0.25)
        self.assertEqual(image[1, 1][0], 65)
        image.premultiply()
        self.assertEqual(image.type, PixelType.RGBA_PREMULTIPLIED)

    def test_copies_are_their_own(self):
        image = picture("RGB", 6, 5, flipped=True)
        copied = image.copy()
        self.assertEqual(copied.tobytes(), image.tobytes())
        copied.clear()
        self.assertNotEqual(copied.tobytes(), image.tobytes())

    def test_bytes_go_from_the_top_without_gaps(self):
        for flipped in (False, True):
            image = picture("RGB", 5, 3, flipped)
            expected = b"".join(bytes(image[x, y]) for y in range(3) for x in range(5))
            self.assertEqual(image.tobytes(), expected)

    def test_data_is_the_memory_and_keeps_the_image(self):
        image = Image("A", 20, 20)
        data = image.data
        self.assertEqual(len(data), 400)
        data[21] = 7
        self.assertEqual(image[1, 1], 7)
        alive = weakref.ref(image)
        del image
        gc.collect()
        self.assertIsNotNone(alive())
        self.assertEqual(data[21], 7)
        del data
        gc.collect()
        self.assertIsNone(alive())

    def test_lies_over_a_buffer(self):
        memory = bytearray(4 * 6)
        image = Image.from_buffer(memory, "RGBA", 3, 2)
        image[1, 1] = (1, 2, 3, 4)
        self.assertEqual(memory[16:20], b"\1\2\3\4")
        with self.assertRaises(BufferError):
            memory.append(1)  # an image lies over it
        del image
        gc.collect()
        memory.append(1)
        with self.assertRaises(ValueError):
            Image.from_buffer(memory, "RGBA", 3, 3)
        with self.assertRaises(ValueError):
            Image.from_buffer(memory, "RGBA", 3, 2, row_bytes=8)
        with self.assertRaises(TypeError):
            Image.from_buffer(b"12345678", "A", 4, 2)

    def test_reads_segment_marks(self):
        image = Image("RGB", 20, 20)
        marker = (0, 255, 255)
        image[0, 0] = marker
        for x in (1, 6, 12, 19):
            image[x, 2] = marker
        image[2, 1] = image[2, 19] = marker
        image.read_segment_marks()
        self.assertEqual(image.segment_layout, 2)
        self.assertEqual(image.segment(0, 0).x0, 2)
        self.assertEqual(image.tiles, (0, 0))
        with self.assertRaises(ValueError):
            image.tile(0, 0)

    def test_cuts_sheets_into_tiles(self):
        image = Image("RGB", 26, 26)
        for x, y in ((0, 0), (2, 1), (8, 2), (15, 2), (22, 2), (2, 8), (2, 15), (2, 22)):
            image[x, y] = (0, 255, 255)
        image[1, 2] = (0, 255, 255)
        image.read_segment_marks()
        columns, rows = image.tiles
        self.assertGreater(columns, 1)
        self.assertNotEqual(image.tile(0, 0), image.tile(columns - 1, rows - 1))

    def test_writes_png(self):
        image = picture("RGB", 5, 3, flipped=True)
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "picture.png")
            image.write_png(path)
            with open(path, "rb") as file:
                content = file.read()
        self.assertEqual(content[:8], b"\x89PNG\r\n\x1a\n")
        self.assertEqual(struct.unpack(">IIBB", content[16:26]), (5, 3, 8, 2))
        start = content.index(b"IDAT") + 4
        size = struct.unpack(">I", content[start - 8 : start - 4])[0]
        rows = zlib.decompress(content[start : start + size])
        self.assertEqual(b"".join(rows[y * 16 + 1 : y * 16 + 16] for y in range(3)), image.tobytes())
        with self.assertRaises(ValueError):
            Image("FLOAT", 2, 2).write_png(path)


@unittest.skipIf(needs_numpy, needs_numpy)
class SharedMemoryTest(unittest.TestCase):
    def test_arrays_are_the_pixels_of_every_type_and_order_of_rows(self):
        expected = {"A": ("u1", ()), "RGB": ("u1", (3,)), "RGBA": ("u1", (4,)), "FLOAT": ("f4", ()), "LONG": ("i4", ())}
        for flipped in (False, True):
            for name, (dtype, inner) in expected.items():
                image = Image(name, 5, 3, flipped=flipped)
                array = numpy.asarray(image)
                self.assertEqual(array.shape, (3, 5) + inner)
                self.assertEqual(array.dtype, numpy.dtype(dtype))
                array[1, 2] = 77
                pixel = image[2, 1]
                self.assertEqual(pixel if not inner else pixel[0], 77)
                image[4, 0] = 9 if name in ("FLOAT", "LONG") else (9 if not inner else (9,) * inner[0])
                self.assertTrue((array[0, 4] == 9).all())
                self.assertEqual(array.tobytes(), image.tobytes())

    def test_tiny_images_share_too(self):
        image = Image("RGBA", 2, 2)
        numpy.asarray(image)[:] = 5
        self.assertEqual(image.tobytes(), b"\5" * 16)

    def test_an_array_keeps_its_image(self):
        image = Image("A", 100, 100)
        image.fill(3)
        alive = weakref.ref(image)
        row = numpy.asarray(image)[50]
        del image
        gc.collect()
        self.assertIsNotNone(alive())
        self.assertEqual(row.sum(), 300)
        del row
        gc.collect()
        self.assertIsNone(alive())

    def test_images_lie_over_arrays(self):
        for shape, dtype, kind in (
            ((6, 7), "u1", PixelType.A),
            ((6, 7, 3), "u1", PixelType.RGB),
            ((6, 7, 4), "u1", PixelType.RGBA),
            ((6, 7), "f4", PixelType.FLOAT),
            ((6, 7), "i4", PixelType.LONG),
        ):
            array = numpy.zeros(shape, dtype)
            image = Image.from_array(array)
            self.assertEqual((image.type, image.width, image.height), (kind, 7, 6))
            image.fill(1 if len(shape) == 2 else (1, 1, 1, 1)[: shape[2]])
            self.assertTrue((array == 1).all())
            array[2, 3] = 8
            pixel = image[3, 2]
            self.assertEqual(pixel if len(shape) == 2 else pixel[0], 8)

    def test_images_lie_over_parts_and_mirrored_arrays(self):
        whole = numpy.zeros((9, 12, 4), "u1")
        for part in (whole[2:7, 3:8], whole[6:1:-1, 3:8], whole[::2, 1:3], whole[::-3, 5:6], whole[3:4]):
            whole[:] = 0
            image = Image.from_array(part)
            self.assertEqual((image.height, image.width), part.shape[:2])
            image.fill((1, 2, 3, 4))
            self.assertEqual((whole.reshape(-1, 4) == (1, 2, 3, 4)).all(1).sum(), image.width * image.height)
            image[0, image.height - 1] = (9, 9, 9, 9)
            self.assertEqual(tuple(part[-1, 0]), (9, 9, 9, 9))
            self.assertTrue((numpy.asarray(image) == part).all())

    def test_an_image_keeps_its_array(self):
        image = Image.from_array(numpy.full((50, 50), 7, "u1"))
        gc.collect()
        self.assertEqual(image.tobytes(), b"\7" * 2500)

    def test_drawing_lands_in_the_array(self):
        array = numpy.zeros((20, 20, 4), "u1")[::-1]
        context = Image.from_array(array).context
        context.render_mode = oxlume.RenderMode.FILL
        context.fill_color = (255, 0, 0)
        context.rect(0, 0, 20, 5)
        del context
        self.assertEqual(tuple(array[2, 10]), (255, 0, 0, 255))
        self.assertEqual(tuple(array[12, 10]), (0, 0, 0, 0))

    def test_premultiplied_pictures_are_told(self):
        image = Image.from_array(numpy.zeros((2, 2, 4), "u1"), "RGBA_PREMULTIPLIED")
        self.assertEqual(image.type, PixelType.RGBA_PREMULTIPLIED)
        with self.assertRaises(ValueError):
            Image.from_array(numpy.zeros((2, 2, 3), "u1"), "RGBA")

    def test_refuses_arrays_that_are_no_pictures(self):
        read_only = numpy.zeros((4, 4), "u1")
        read_only.flags.writeable = False
        for array in (
            numpy.zeros(4, "u1"),
            numpy.zeros((4, 4, 2), "u1"),
            numpy.zeros((4, 4, 1), "u1"),
            numpy.zeros((4, 4), "f8"),
            numpy.zeros((4, 4), ">f4"),
            numpy.zeros((2, 2, 2, 4), "u1"),
            numpy.zeros((0, 4), "u1"),
            numpy.zeros((4, 8), "u1")[:, ::2],
            numpy.zeros((4, 4, 4), "u1")[:, ::-1],
            numpy.zeros((4, 4, 4), "u1").transpose(1, 0, 2),
            numpy.zeros((4, 4, 6), "u1")[:, :, :3],
            numpy.broadcast_to(numpy.zeros(4, "u1"), (4, 4)),
            numpy.lib.stride_tricks.as_strided(numpy.zeros(9, "u1"), (4, 4), (1, 1)),
            numpy.frombuffer(bytearray(65), "u1")[1:].view("f4").reshape(4, 4),
            read_only,
        ):
            with self.assertRaises(ValueError, msg=f"{array.shape} {array.strides} {array.dtype}"):
                Image.from_array(array)


if __name__ == "__main__":
    unittest.main()
