/* A sheen of three layers: a dish, a stud that is added to it, and a ring of studs around. */
#include "picture.h"

enum {
    Symmetry = 0,
    Depth = 1,
    Width = 2,
    Height = 3,
    HorizontalBorder = 4,
    VerticalBorder = 5,
    HorizontalPosition = 6,
    CornerType = 17,
    CenterRotationPeriod = 53
};

static void shape(LxSheen *sheen, int layer, double symmetry, double depth, double size, double border) {
    LxSheen_SetLayerValue(sheen, layer, Symmetry, symmetry);
    LxSheen_SetLayerValue(sheen, layer, Depth, depth);
    LxSheen_SetLayerValue(sheen, layer, Width, size);
    LxSheen_SetLayerValue(sheen, layer, Height, size);
    LxSheen_SetLayerValue(sheen, layer, HorizontalBorder, border);
    LxSheen_SetLayerValue(sheen, layer, VerticalBorder, border);
    LxSheen_SetLayerValue(sheen, layer, CornerType, 1);
}

int main(void) {
    Oxlume_Init();
    LxSheen *sheen = LxSheen_Create(240);
    LxSheen_SetLayerName(sheen, 0, "dish");
    shape(sheen, 0, 0, 0.3, 0.45, -0.3); /* symmetry 0: a circle */
    LxSheen_SetLayerColor(sheen, 0, LxRGBA(70, 110, 150, 255));

    /* A new layer lies on top of the others; its height is added to theirs. */
    const int stud = LxSheen_AddLayer(sheen, "stud");
    shape(sheen, stud, 6, 0.4, 0.16, -0.5); /* six sides */
    LxSheen_SetLayerColor(sheen, stud, LxRGBA(230, 180, 70, 255));

    const int ring = LxSheen_AddLayer(sheen, "ring");
    shape(sheen, ring, 0, 0.3, 0.45, -0.8);
    LxSheen_SetLayerValue(sheen, ring, CenterRotationPeriod, 10); /* ten around the middle */
    LxSheen_SetLayerValue(sheen, ring, HorizontalPosition, 0.62);
    LxSheen_SetLayerColor(sheen, ring, LxRGBA(220, 220, 225, 255));

    LxImage *picture = LxSheen_RenderDescriptor(sheen, 0, 1);
    for (int i = 0; i < LxSheen_NumberOfLayers(sheen); ++i)
        printf("layer %d: %s\n", i, LxSheen_LayerName(sheen, i));
    const float *height = LxImage_ConstPointer(LxSheen_FloatImage(sheen), 120, 120);
    printf("height in the middle: %.2f\n", *height);
    printPixel("the middle", picture, 120, 120);

    savePicture(picture, "14-sheen-layers.pam");
    LxSheen_Delete(sheen);
    return 0;
}
