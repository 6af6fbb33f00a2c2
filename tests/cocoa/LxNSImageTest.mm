#include <gtest/gtest.h>

#import <oxlume/cocoa/LxCocoaImage.h>
#import <oxlume/cocoa/LxNSImage.h>

#include "tests/cocoa/Bitmap.h"
#include "tests/cocoa/Screen.h"

using namespace lx::test;

namespace {

// Keeps a bitmap as a PNG file in the temporary folder.
NSString *fileOf(NSBitmapImageRep *rep) {
    NSString *name =
        [NSString stringWithFormat:@"oxlume-%d.png", [[NSProcessInfo processInfo] processIdentifier]];
    NSString *path = [NSTemporaryDirectory() stringByAppendingPathComponent:name];
    [[rep representationUsingType:NSPNGFileType properties:[NSDictionary dictionary]] writeToFile:path
                                                                                       atomically:NO];
    return path;
}

// The picture of a file that holds a bitmap. It belongs to the caller, and the file is gone.
LxNSImage *newPicture(NSBitmapImageRep *rep) {
    NSString *path = fileOf(rep);
    LxNSImage *picture = [[LxNSImage alloc] initWithContentsOfTiledFile:path];
    [[NSFileManager defaultManager] removeFileAtPath:path handler:nil];
    return picture;
}

void expectColor(const LxRGBA &color, int r, int g, int b) {
    EXPECT_EQ(color.r, r);
    EXPECT_EQ(color.g, g);
    EXPECT_EQ(color.b, b);
}

} // namespace

TEST(LxNSImage, MarksOfAFileAreReadThroughThePlatform) {
    NSBitmapImageRep *rep = makeBitmap(40, 12, 4);
    markColumns(rep, {10, 20, 30, 255}, {4, 12, 25, 33});
    NSString *path = fileOf(rep);
    NSImage *picture = [[[NSImage alloc] initWithContentsOfFile:path] autorelease];
    LxImage *image = LxImage_CopyFromNSImage(picture);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_SegmentType(image), 2);
    EXPECT_EQ(LxImage_SegmentRectL(image, 1, 0).x0, 13);
    LxImage_Delete(image);
    [[NSFileManager defaultManager] removeFileAtPath:path handler:nil];
}

TEST(LxNSImage, APictureWithoutTilesIsDrawn) {
    NSBitmapImageRep *rep = makeBitmap(16, 16, 4);
    for (int i = 0; i < 16 * 16; ++i)
        std::memcpy(planeOf(rep) + i * 4, "\x10\xC0\x20\xFF", 4);
    LxNSImage *picture = [newPicture(rep) autorelease];
    ASSERT_NE(picture, nil);
    NSView *view = showView([&](NSView *) { [picture fillInRect:NSMakeRect(40, 50, 100, 100)]; });
    expectColor(colorAt(view, 41, 51), 0x10, 0xC0, 0x20);
    expectColor(colorAt(view, 54, 64), 0x10, 0xC0, 0x20);
    [picture fillInRect:NSMakeRect(0, 0, 10, 10)]; // without focus: nothing
}

TEST(LxNSImage, ATiledPictureLeavesTheScreenAsItWas) {
    NSBitmapImageRep *rep = makeBitmap(40, 12, 4);
    markColumns(rep, {10, 20, 30, 255}, {4, 13, 22, 31}); // three equal columns
    LxNSImage *picture = [newPicture(rep) autorelease];
    ASSERT_NE(picture, nil);
    NSView *view = showView([&](NSView *shown) {
        [[NSColor redColor] set];
        NSRectFill([shown bounds]);
        [[NSColor blueColor] set];
        NSRectFill(NSMakeRect(40, 50, 5, 5));
        [picture fillInRect:NSMakeRect(40, 50, 60, 60)];
    });
    expectColor(colorAt(view, 42, 52), 0, 0, 255);
    expectColor(colorAt(view, 60, 70), 255, 0, 0);
}

TEST(LxNSImage, CopiesAreOnTheirOwn) {
    NSBitmapImageRep *rep = makeBitmap(16, 16, 4);
    std::memset(planeOf(rep), 255, 16 * 16 * 4);
    LxNSImage *picture = newPicture(rep);
    LxNSImage *copy = [picture copy];
    [picture release];
    NSView *view = showView([&](NSView *) { [copy fillInRect:NSMakeRect(40, 50, 100, 100)]; });
    expectColor(colorAt(view, 41, 51), 255, 255, 255);
    [copy release];
}

TEST(LxNSImage, NoFileNoPicture) {
    EXPECT_EQ([[LxNSImage alloc] initWithContentsOfTiledFile:@"/nonexistent/picture.png"], nil);
    EXPECT_EQ([[LxNSImage alloc] initWithContentsOfTiledFile:nil], nil);
}
