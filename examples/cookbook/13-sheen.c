/* A first sheen: a plateau with a rim, shaped by a few numbers and lit. */
#include "picture.h"

/* Parameters are addressed by their index. */
enum { Depth = 1, Width = 2, Height = 3, HorizontalBorder = 4, VerticalBorder = 5, CornerType = 17 };

int main(void) {
    Oxlume_Init();
    LxSheen *sheen = LxSheen_Create(200); /* 200 by 200 pixels, with one layer */
    if (sheen == NULL)
        return 1;

    double value, minimum, maximum;
    int32_t continuous;
    const char *label = LxSheen_LayerValueParameter(sheen, 0, Depth, &value, &minimum, &maximum, &continuous);
    printf("%s: %g, from %g to %g\n", label, value, minimum, maximum);

    LxSheen_SetLayerValue(sheen, 0, Depth, 0.6);
    LxSheen_SetLayerValue(sheen, 0, Width, 0.4); /* so far to either side, of a picture as wide as 1 */
    LxSheen_SetLayerValue(sheen, 0, Height, 0.3);
    LxSheen_SetLayerValue(sheen, 0, HorizontalBorder, -0.4); /* carved out of the width */
    LxSheen_SetLayerValue(sheen, 0, VerticalBorder, -0.4);
    LxSheen_SetLayerValue(sheen, 0, CornerType, 1); /* round */
    LxSheen_SetLayerColor(sheen, 0, LxRGBA(200, 120, 60, 255));

    /* The picture belongs to the sheen. */
    LxImage *picture = LxSheen_RenderDescriptor(sheen, 0, 1);
    printPixel("on the plateau", picture, 100, 100);
    printPixel("outside", picture, 5, 5);

    const float *height = LxImage_ConstPointer(LxSheen_FloatImage(sheen), 100, 100);
    printf("height of the plateau: %.2f\n", *height);

    savePicture(picture, "13-sheen.pam");
    LxSheen_Delete(sheen);
    return 0;
}
