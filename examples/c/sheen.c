/* A golden star of five points, bevelled and lit, and how high its surface is in the middle. */
#include <oxlume/oxlume.h>
#include <stdio.h>

#include "ppm.h"

/* A layer has 76 parameters, which are addressed by their index; `oxlume sheen --list` tells all. */
static const struct {
    uint32_t parameter;
    double value;
} star[] = {
    {0, 5},    /* points */
    {1, 0.75}, /* height */
    {2, 0.46}, /* size of the plateau at the points */
    {3, 0.16}, /* and across them */
    {4, -1},   /* border: all of the plateau slopes */
    {5, 0},    /* and none of what lies across */
    {9, 270},  /* turned upwards */
    {27, -1},  /* arms that narrow */
    {28, 3},   /* in a straight line */
};

int main(void) {
    LxSheen *sheen = LxSheen_Create(256);
    double minimum, maximum, value;
    int32_t continuous;
    size_t i;
    int written;
    LxImage *picture;
    if (sheen == NULL)
        return 1;
    LxSheen_SetLayerColor(sheen, 0, LxRGBA(230, 190, 90, 255));
    for (i = 0; i < sizeof star / sizeof star[0]; ++i)
        LxSheen_SetLayerValue(sheen, 0, star[i].parameter, star[i].value);
    printf("%s", LxSheen_LayerValueParameter(sheen, 0, 0, &value, &minimum, &maximum, &continuous));
    printf(": %g of %g to %g\n", value, minimum, maximum);

    picture = LxSheen_RenderDescriptor(sheen, 0, 1);
    if (picture == NULL)
        return 1;
    printf("height in the middle: %.2f\n",
           *(const float *)LxImage_ConstPointer(LxSheen_FloatImage(sheen), 128, 128));
    written = writePpm(picture, "sheen.ppm");
    LxSheen_Delete(sheen); /* with its pictures */
    return written ? 0 : 1;
}
