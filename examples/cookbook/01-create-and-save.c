/* Makes a picture, fills it, draws a border and saves it. */
#include "picture.h"

int main(void) {
    Oxlume_Init();

    /* From (0, 0) to (240, 160), the far sides excluded. The last but one argument clears the pixels. */
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 1, 0);
    if (image == NULL)
        return 1; /* no memory, or a size that cannot be */

    LxImage_Fill(image, LxColor_RGBA(30, 80, 160, 255));
    LxImage_Frame(image); /* a border one pixel wide, in a fixed colour */

    printf("%d x %d pixels, %d bytes each\n", LxImage_w(image), LxImage_h(image),
           LxImage_BytesPerPixel(image));
    printPixel("corner", image, 0, 0);
    printPixel("middle", image, 120, 80);

    const int saved = savePicture(image, "01-create-and-save.pam");
    LxImage_Delete(image);
    return saved ? 0 : 1;
}
