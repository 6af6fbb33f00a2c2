"""What the tests of the Python package share."""

import os

import oxlume

try:
    import numpy
except ImportError:
    if os.environ.get("CI"):
        raise  # nothing is left out there
    numpy = None

needs_numpy = "numpy is not installed" if numpy is None else ""


def picture(pixel_type, width, height, flipped=False):
    """An image in which every component of every pixel differs from its neighbours'."""
    image = oxlume.Image(pixel_type, width, height, flipped=flipped)
    for y in range(height):
        for x in range(width):
            image[x, y] = tuple((7 * x + 31 * y + 3 * i) % 256 for i in range(len(image[0, 0])))
    return image
