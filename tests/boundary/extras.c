/* A client of the extras, one of each kind, in C and in C++. */
#include <stdio.h>
#include <string.h>

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

static LxRGBA pixelAt(const LxImage *image, int32_t x, int32_t y) {
    LxColor color = LxColor_L(0);
    LxImage_PixelAt(image, x, y, &color);
    return color.content.rgba;
}

static void drawSvg(void) {
    const char text[] = "<svg viewBox='0 0 8 8'><path fill='#ff0000' d='M0 0L8 0L8 8L0 8Z'/></svg>";
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 8, 8, 1, 0);
    LxSVG_SetPaintFlags(0);
    EXPECT(LxSVG_ReadText(LxImage_GC(image), text, strlen(text)) == 1);
    EXPECT(pixelAt(image, 4, 4).r == 255 && pixelAt(image, 4, 4).g == 0 && pixelAt(image, 4, 4).a == 255);
    EXPECT(LxSVG_PaintFlags() == 0);
    EXPECT(LxSVG_ReadFile(LxImage_GC(image), "/no/such/file.svg") == 0);
    LxImage_Delete(image);
}

static void morph(void) {
    LxImage *from = LxImage_Create(kLxPixelRGBA, 0, 0, 30, 10, 1, 0);
    LxImage *to = LxImage_Create(kLxPixelRGBA, 0, 0, 30, 10, 1, 0);
    LxMorphLine line = LxMorphLine(5, 0, 5, 9);
    LxMorphLine moved = LxMorphLine(15, 0, 15, 9);
    LxImage_SetPixelAt(from, 5, 3, LxColor_RGBA(9, 8, 7, 6));
    EXPECT(LxMorph_Frame(from, to, &line, &moved, 1, 0.5) == 1);
    EXPECT(pixelAt(to, 10, 3).r == 9 && pixelAt(to, 10, 3).a == 6);
    LxImage_Delete(to);
    LxImage_Delete(from);
}

static void makeSheens(void) {
    const char preset[] = "[layer a]\ncolor = 255, 0, 0\nkHeight = 0.25\n";
    char message[64];
    LxSheen *sheen = LxSheen_Create(16);
    LxSheen *between;
    LxSheenLight light = LxSheen_Light(sheen, 1);
    char *text;
    EXPECT(LxSheen_LoadPreset(sheen, 1, preset, strlen(preset), message, sizeof message) == 1);
    EXPECT(message[0] == 0);
    EXPECT(LxSheen_LoadPreset(sheen, 1, "kHeight", 7, message, sizeof message) == 0);
    EXPECT(strncmp(message, "line 1: ", 8) == 0);
    light.ambient = 1;
    EXPECT(LxSheen_SetLight(sheen, 1, light) == 1);
    EXPECT(LxSheen_SetLayerMode(sheen, 0, kLxSheenLarger) == 1);
    EXPECT(LxSheen_SetLayerOpacity(sheen, 0, 0.5) == 1);
    EXPECT(LxSheen_SetLayerEnabled(sheen, 0, 1) == 1);
    between = LxSheen_CreateBetween(0.5, sheen, 0, sheen, 1);
    EXPECT(LxSheen_LayerMode(between, 0) == kLxSheenLarger);
    EXPECT(LxSheen_LayerOpacity(between, 0) == 0.75);
    EXPECT(LxSheen_RenderDescriptor(between, 0, 1) != NULL);
    text = LxSheen_CreatePreset(sheen, 1);
    EXPECT(strcmp(text, "[light]\nambient = 1\n\n[layer a]\ncolor = 255, 0, 0\nkHeight = 0.25\n") == 0);
    LxMem_free(text);
    LxSheen_Delete(between);
    LxSheen_Delete(sheen);
}

static void readMarks(void) {
    LxImage *image = LxImage_Create(kLxPixelRGB, 0, 0, 20, 20, 1, 0);
    const LxColor marker = LxColor_RGB(0, 255, 255);
    LxImage_SetPixelAt(image, 0, 0, marker);
    LxImage_ReadSegmentMarks(image);
    EXPECT(LxImage_isTiled(image) == 1);
    LxImage_SetPixelAt(image, 0, 0, LxColor_RGB(0, 0, 0));
    LxImage_ReadSegmentMarks(image);
    EXPECT(LxImage_isTiled(image) == 0);
    LxImage_Delete(image);
}

int main(void) {
    Oxlume_Init();
    drawSvg();
    morph();
    makeSheens();
    readMarks();
    return failures != 0;
}
