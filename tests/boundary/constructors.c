/* Calls every constructor that bears its type's name, and finds each under that name in the library. The
 * build compiles this file as C and as C++. */
#include <dlfcn.h>
#include <stdio.h>

#include <oxlume/LxExtras.h>
#include <oxlume/oxlume.h>

static int failures = 0;

static void expect(int holds, const char *what) {
    if (!holds) {
        printf("does not hold: %s\n", what);
        ++failures;
    }
}
#define EXPECT(condition) expect(condition, #condition)

int main(void) {
    LxPointL pointL = LxPointL(3, 4);
    LxPointD pointD = LxPointD(0.5, -1.5);
    LxRectL rectL = LxRectL(30, 2, 10, 4);
    LxRectD rectD = LxRectD(3.5, 2, 1.5, 4);
    LxLineD line = LxLineD(1, 2, 3, 4);
    LxMatrix matrix = LxMatrix();
    LxRGBA rgba = LxRGBA(1, 2, 3, 4);
    LxRGB rgb = LxRGB(1, 2, 3);
    LxBlend blend = LxBlend(2, 255);
    LxMorphLine morphLine = LxMorphLine(1, 2, 4, 6);

    EXPECT(pointL.x == 3 && pointL.y == 4);
    EXPECT(pointD.x == 0.5 && pointD.y == -1.5);
    EXPECT(rectL.x0 == 10 && rectL.y0 == 2 && rectL.x1 == 30 && rectL.y1 == 4);
    EXPECT(rectD.x0 == 1.5 && rectD.y0 == 2 && rectD.x1 == 3.5 && rectD.y1 == 4);
    EXPECT(line.x0 == 1 && line.y0 == 2 && line.x1 == 3 && line.y1 == 4);
    EXPECT(matrix.m0 == 1 && matrix.m1 == 0 && matrix.m4 == 1 && matrix.m8 == 1);
    EXPECT(rgba.r == 1 && rgba.g == 2 && rgba.b == 3 && rgba.a == 4);
    EXPECT(rgb.r == 1 && rgb.g == 2 && rgb.b == 3);
    EXPECT(morphLine.x1 == 4 && morphLine.dy == 4 && morphLine.lengthSquared == 25 && morphLine.length == 5);
    EXPECT(blend.mode == 2 && blend.opacity == 255 && blend.channel == 6);

    EXPECT(sizeof(LxRGBA) == 4 && sizeof(LxRGB) == 3 && sizeof(LxColor) == 8 && sizeof(LxMatrix) == 72);

    {
        static const char *const names[] = {"LxPointL", "LxPointD", "LxRectL", "LxRectD", "LxLineD",
                                            "LxMatrix", "LxRGBA",   "LxRGB",   "LxBlend", "LxMorphLine"};
        size_t i;
        for (i = 0; i < sizeof names / sizeof names[0]; ++i)
            expect(dlsym(RTLD_DEFAULT, names[i]) != NULL, names[i]);
    }
    return failures != 0;
}
