import gc
import math
import os
import tempfile
import unittest

import oxlume
from oxlume import Blend, Context, Gradient, GradientType, Image, Matrix, Mode, Path, Rect, RenderMode, StrokeStyle, morph

RED, BLUE, NOTHING = (255, 0, 0, 255), (0, 0, 255, 255), (0, 0, 0, 0)
SVG = "<svg viewBox='0 0 10 10'><path fill='#ff0000' d='M0 0L10 0L10 10L0 10Z'/></svg>"


def canvas(width=40, height=40):
    image = Image("RGBA", width, height)
    context = image.context
    context.render_mode = RenderMode.FILL
    context.fill_color = RED
    return image, context


class ValuesTest(unittest.TestCase):
    def test_rectangles_meet(self):
        rect = Rect(0, 0, 10, 10)
        self.assertEqual(rect & (5, 6, 20, 20), (5, 6, 10, 10))
        self.assertEqual(rect | (5, 6, 20, 20), (0, 0, 20, 20))
        self.assertEqual((rect.width, rect.height), (10, 10))

    def test_matrices_multiply(self):
        scaled, moved = Matrix.scaling(2, 3), Matrix.translation(10, 20)
        self.assertEqual(scaled @ (1, 1), (2, 3))
        self.assertEqual(moved @ scaled @ (1, 1), (12, 23))
        self.assertEqual(scaled @ moved @ (1, 1), (22, 63))
        self.assertEqual(scaled @ scaled.inverse(), Matrix())
        self.assertEqual(hash(Matrix()), hash(Matrix(1, 0, 0, 0, 1, 0)))
        self.assertNotEqual(scaled, moved)
        self.assertEqual(repr(moved), "Matrix(1.0, 0.0, 10.0, 0.0, 1.0, 20.0)")
        x, y = Matrix.rotation(math.pi / 2, (1, 1)) @ (2, 1)
        self.assertAlmostEqual(x, 1)
        self.assertAlmostEqual(y, 2)
        with self.assertRaises(ValueError):
            Matrix.scaling(0, 1).inverse()


class PathTest(unittest.TestCase):
    def test_builds_in_chains(self):
        path = Path().move_to(1, 2).line_to(3, 4).line_to(5, 6).close()
        self.assertEqual(path.subpaths(), [([(1, 2), (3, 4), (5, 6), (1, 2)], True)])
        self.assertFalse(path.is_closed)
        self.assertTrue(path.mend())
        self.assertTrue(path.is_closed)
        self.assertEqual(path.clear().subpaths(), [])

    def test_has_shapes(self):
        self.assertEqual(Path().add_rect(0, 0, 4, 2).subpaths()[0].points[2], (4, 2))
        self.assertEqual(Path().add_polygon([(0, 0), (4, 0), (4, 4)]).subpaths()[0].points, [(0, 0), (4, 0), (4, 4), (0, 0)])
        for path in (
            Path().add_circle(5, 5, 4),
            Path().add_ellipse(5, 5, 4, 2),
            Path().add_pie(5, 5, 4, 0, 90),
            Path().add_ring(5, 5, 2, 4, 0, 90),
            Path().add_rect(0, 0, 20, 20, 5, 5),
            Path().move_to(0, 0).quad_to(5, 0, 5, 5),
            Path().move_to(0, 0).curve_to(50, 0, 50, 50, 0, 50),
        ):
            self.assertGreater(len(path.subpaths()[0].points), 5)
        fitted = Path().add_fitted([(0, 0), (10, 5), (20, 0)], 1.0)
        self.assertEqual(fitted.subpaths()[0].points[0], (0, 0))

    def test_transforms_flattens_outlines_and_clips(self):
        line = Path().move_to(0, 5).line_to(10, 5)
        self.assertEqual(line.subpaths(Matrix.translation(1, 1))[0].points, [(1, 6), (11, 6)])
        self.assertEqual(line.copy().transform(Matrix.scaling(2, 2)).subpaths()[0].points, [(0, 10), (20, 10)])
        corners = {point for part in line.copy().outline(2, StrokeStyle.BEVEL).subpaths() for point in part.points}
        self.assertTrue({(0, 4), (0, 6), (10, 4), (10, 6)} <= corners)
        clipped = Path().add_rect(0, 0, 10, 10).clip(2, 2, 4, 4).subpaths()[0].points
        self.assertEqual((min(clipped), max(clipped)), ((2, 2), (4, 4)))
        self.assertEqual(line.copy().flatten(Matrix.scaling(3, 1)).subpaths()[0].points, [(0, 5), (30, 5)])
        self.assertEqual(len(line.add(line).subpaths()), 2)


class ContextTest(unittest.TestCase):
    def test_draws_shapes(self):
        image, context = canvas()
        context.circle(20, 20, 8)
        self.assertEqual((image[20, 20], image[5, 5]), (RED, NOTHING))
        context.fill_color = BLUE
        context.rect(0, 0, 4, 4)
        self.assertEqual(image[2, 2], BLUE)
        context.rect(20, 0, 40, 15, 3, 3)
        self.assertEqual(image[30, 8], BLUE)
        context.polygon([(0, 30), (10, 30), (10, 40), (0, 40)])
        self.assertEqual(image[5, 35], BLUE)
        context.ellipse(35, 35, 4, 2)
        self.assertEqual(image[35, 35], BLUE)
        context.path(Path().add_rect(0, 10, 4, 14))
        self.assertEqual(image[2, 12], BLUE)
        context.render_mode = RenderMode.STROKE
        context.stroke_color, context.stroke_width = RED, 4
        context.line(0, 25, 40, 25)
        self.assertEqual(image[3, 25], RED)
        context.fill((1, 2, 3))
        self.assertEqual(image[39, 39], (1, 2, 3, 255))
        context.clear()
        self.assertEqual(image[39, 39], NOTHING)

    def test_keeps_its_attributes(self):
        _, context = canvas()
        context.render_mode = RenderMode.FILL | RenderMode.STROKE
        context.stroke_color = (1, 2, 3, 4)
        context.stroke_width = 2.5
        context.stroke_style = StrokeStyle.MITRE
        context.fill_blend = Mode.MULTIPLY
        context.stroke_blend = Blend(Mode.SCREEN, 99)
        context.image_blend = Mode.SRC
        self.assertEqual(context.render_mode, 3)
        self.assertEqual((context.fill_color, context.stroke_color), (RED, (1, 2, 3, 4)))
        self.assertEqual((context.stroke_width, context.stroke_style), (2.5, StrokeStyle.MITRE))
        self.assertEqual(context.fill_blend, Blend(Mode.MULTIPLY))
        self.assertEqual(context.stroke_blend, Blend(Mode.SCREEN, 99))
        self.assertEqual(context.image_blend.mode, Mode.SRC)

    def test_clips_and_transforms(self):
        image, context = canvas()
        context.clip = (30, 20, 35, 25)
        self.assertEqual(context.clip, (30, 20, 35, 25))
        self.assertEqual(context.bounds, (0, 0, 40, 40))
        context.rect(0, 0, 40, 40)
        self.assertEqual((image[32, 22], image[28, 22]), (RED, NOTHING))
        context.translate(1, 2)
        context.scale(2, 2)
        context.rotate(0)
        self.assertEqual(context.matrix, Matrix(2, 0, 2, 0, 2, 4))
        context.matrix = Matrix.scaling(3, 3)
        self.assertEqual(context.matrix, Matrix.scaling(3, 3))
        context.multiply(Matrix.translation(1, 1))
        self.assertEqual(context.matrix, Matrix(3, 0, 3, 0, 3, 3))
        context.reset_matrix(5, 6)
        self.assertEqual(context.matrix, Matrix.translation(5, 6))

    def test_keeps_gradients_that_nobody_else_holds(self):
        image, context = canvas(100, 10)
        context.fill_gradient = Gradient([(0, RED), (1, BLUE, 0.5)], GradientType.ACROSS)
        context.stroke_gradient = context.fill_gradient
        del context
        gc.collect()
        image.context.rect(0, 0, 100, 10)
        self.assertGreater(image[3, 5][0], 240)
        self.assertGreater(image[96, 5][2], 240)
        image.context.fill_gradient = image.context.stroke_gradient = None
        image.context.rect(0, 0, 100, 10)
        self.assertEqual(image[96, 5], RED)
        with self.assertRaises(ValueError):
            Gradient([(0, 0)] * 11)

    def test_draws_images(self):
        image, context = canvas()
        stamp = Image("RGBA", 3, 3)
        stamp.fill(BLUE)
        mask = Image("A", 3, 3, x=10, y=10)
        mask[1, 1] = 255
        context.image(stamp, 30, 30)
        context.image(stamp, 10, 10, mask)
        self.assertEqual((image[31, 31], image[33, 33]), (BLUE, NOTHING))
        self.assertEqual((image[11, 11], image[10, 10]), (BLUE, NOTHING))

    def test_one_of_its_own_keeps_the_image(self):
        image, first = canvas()
        second = Context(image)
        self.assertEqual(second.clip, (0, 0, 40, 40))
        self.assertEqual(second.render_mode, RenderMode.STROKE)
        del image, first
        gc.collect()
        second.render_mode = RenderMode.FILL
        second.rect(0, 0, 40, 40)

    def test_plays_svg(self):
        image, context = canvas(10, 10)
        context.read_svg(SVG)
        self.assertEqual(image[5, 5], RED)
        image.clear()
        context.read_svg(SVG.encode())
        self.assertEqual(image[5, 5], RED)
        image.clear()
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "file:%41.svg")  # a name that looks like a URL
            with open(path, "w") as file:
                file.write(SVG)
            context.read_svg_file(path)
            self.assertEqual(image[5, 5], RED)
            with self.assertRaises(ValueError):
                context.read_svg_file(os.path.join(folder, "none.svg"))
        with self.assertRaises(ValueError):
            context.read_svg("no XML")


class MorphTest(unittest.TestCase):
    def test_moves_pictures_by_lines(self):
        image = Image("RGBA", 30, 6)
        image[5, 3] = (9, 8, 7, 6)
        result = morph(image, [(5, 0, 5, 5)], [(15, 0, 15, 5)], 0.5)
        self.assertEqual(result[10, 3], (9, 8, 7, 6))
        self.assertEqual(morph(image, [], []).tobytes(), image.tobytes())
        for lines, t in (([], 1.0), ([(1, 0, 1, 5)], math.inf)):
            with self.assertRaises(ValueError):
                morph(image, [(5, 0, 5, 5)], lines, t)


if __name__ == "__main__":
    unittest.main()
