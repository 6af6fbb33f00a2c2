import gc
import math
import unittest

from oxlume import PARAMETERS, Light, PixelType, Sheen, SheenMode, parameters


class SheenTest(unittest.TestCase):
    def test_renders_its_layers(self):
        sheen = Sheen(32)
        sheen.layers[0].set(kHeight=0.75).color = (200, 100, 50)
        image = sheen.render()
        self.assertEqual((image.type, image.width, image.height), (PixelType.RGBA, 32, 32))
        self.assertEqual(image[16, 16], (141, 70, 35, 255), "the sine of 45 degrees")
        self.assertEqual(sheen.heights()[16, 16], 0.75)
        self.assertEqual(sheen.size, 32)
        sheen.size = 16
        self.assertEqual(sheen.render(1).width, 16)
        del sheen
        gc.collect()
        self.assertEqual(image[16, 16], (141, 70, 35, 255), "the picture is the caller's own")

    def test_layers_have_values(self):
        sheen = Sheen(8)
        layer = sheen.add_layer("top", kSymmetry=5)
        self.assertEqual((len(sheen.layers), layer.name, layer["kSymmetry"]), (2, "top", 5))
        self.assertEqual((layer.mode, layer.opacity, layer.enabled, layer.color), (SheenMode.ADD, 1, True, (255,) * 4))
        layer.name, layer.mode, layer.opacity, layer.enabled = "réglisse", SheenMode.LARGER, 0.5, False
        layer.color, layer[1] = (1, 2, 3, 4), 0.25
        same = sheen.layers[-1]
        self.assertEqual((same.name, same.mode, same.opacity), ("réglisse", SheenMode.LARGER, 0.5))
        self.assertEqual((same.enabled, same.color, same["kHeight"]), (False, (1, 2, 3, 4), 0.25))
        self.assertEqual([layer.name for layer in sheen.layers], ["no name", "réglisse"])
        self.assertEqual(len(sheen.layers[:1]), 1)

    def test_refuses_what_is_not_there(self):
        sheen = Sheen(8)
        layer = sheen.layers[0]
        for key in ("kHeigth", 76, -1):
            with self.assertRaises(KeyError):
                layer[key]
            with self.assertRaises(KeyError):
                layer[key] = 1
        for index in (1, -2):
            with self.assertRaises(IndexError):
                sheen.layers[index]
        for opacity in (-0.1, 1.1, math.nan):
            with self.assertRaises(ValueError):
                layer.opacity = opacity
        with self.assertRaises(ValueError):
            layer.mode = 12
        with self.assertRaises(ValueError):
            layer.name = "a\0b"
        with self.assertRaises(ValueError):
            Sheen(0)
        for descriptor in (2, -1):
            with self.assertRaises(ValueError):
                sheen.render(descriptor)
        sheen.load_preset("[layer a]\n[layer b]")
        second = sheen.layers[1]
        sheen.load_preset("[layer a]")
        with self.assertRaises(IndexError):
            second.name

    def test_descriptors_have_a_light_each(self):
        sheen = Sheen(32)
        light = sheen.light()
        self.assertEqual(light, Light(), "the defaults")
        light.brilliance, light.ambient, light.color = 0, 0.5, (1, 2, 3, 4)
        sheen.set_light(light, 1)
        self.assertEqual(sheen.light(1), light)
        self.assertEqual(sheen.light(0), Light())
        self.assertEqual(sheen.render(1)[16, 16], (127, 127, 127, 255))
        sheen.set_alpha_threshold(2.0, 1)
        self.assertEqual(sheen.alpha_threshold(1), 2.0)
        self.assertEqual(sheen.render(1)[16, 16], (0, 0, 0, 0))
        with self.assertRaises(ValueError):
            sheen.set_light(Light(width=math.inf))
        with self.assertRaises(ValueError):
            sheen.set_alpha_threshold(math.nan)

    def test_between_two_descriptors_lies_another(self):
        sheen = Sheen(8)
        sheen.layers[0]["kHeight"] = 0
        sheen.current_descriptor = 1
        sheen.layers[0]["kHeight"] = 1
        self.assertEqual(sheen.current_descriptor, 1)
        between = sheen.between(0.25)
        self.assertEqual(between.layers[0]["kHeight"], 0.25)
        with self.assertRaises(ValueError):
            between.heights()
        self.assertEqual(between.render().width, 8)
        self.assertEqual(sheen.between(0.5, 1, between, 0).layers[0]["kHeight"], 0.625)
        with self.assertRaises(ValueError):
            sheen.between(math.nan)

    def test_loads_and_stores_presets(self):
        text = "[layer base]\ncolor = 1, 2, 3\nkHeight = 0.125\n"
        sheen = Sheen.from_preset(text, 8)
        self.assertEqual(sheen.preset(), text)
        self.assertEqual(sheen.preset(1), "[layer no name]\ncolor = 255, 255, 255\n")
        with self.assertRaisesRegex(ValueError, 'line 2: unknown parameter "kHeigth"; the nearest is "kHeight"'):
            sheen.load_preset("[layer]\nkHeigth = 1")
        self.assertEqual(sheen.preset(), text, "nothing has changed")
        sheen.load_preset(text.encode(), 1)
        self.assertEqual(sheen.preset(1), text)

    def test_parameters_are_told(self):
        rows = list(parameters())
        self.assertEqual([row.name for row in rows], list(PARAMETERS))
        self.assertEqual(len(rows), 76)
        self.assertEqual(PARAMETERS[1], "kHeight")
        height = rows[1]
        self.assertEqual((height.minimum, height.maximum, height.continuous), (0, 1, True))
        layer = Sheen(1).layers[0]
        self.assertEqual([row.default for row in rows], [layer[name] for name in PARAMETERS])


if __name__ == "__main__":
    unittest.main()
