// A client of liboxlume-cocoa: hands an image to GNUstep.
#import <AppKit/AppKit.h>
#include <cstdio>
#include <oxlume/cocoa/LxCocoa.h>

int main() {
    NSAutoreleasePool *pool = [NSAutoreleasePool new];
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 40, 30, 1, 0);
    NSImage *picture = LxImage_CreateNSImage(image);
    std::printf("%g x %g\n", [picture size].width, [picture size].height);
    LxImage_Delete(image);
    [pool release];
    return 0;
}
