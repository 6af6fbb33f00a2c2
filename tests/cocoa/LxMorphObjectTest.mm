#include <gtest/gtest.h>

#import <Foundation/Foundation.h>
#import <oxlume/cocoa/LxMorphObject.h>

#include "tests/cocoa/Bitmap.h"

using namespace lx::test;

namespace {

// A picture file of 6 by 4 pixels whose first is r 7, g 8, b 9.
NSURL *pictureFile() {
    NSBitmapImageRep *rep = makeBitmap(6, 4, 3);
    std::memset(planeOf(rep), 100, static_cast<size_t>([rep bytesPerRow] * 4));
    planeOf(rep)[0] = 7;
    planeOf(rep)[1] = 8;
    planeOf(rep)[2] = 9;
    NSString *name =
        [NSString stringWithFormat:@"oxlume-%d.png", [[NSProcessInfo processInfo] processIdentifier]];
    NSString *path = [NSTemporaryDirectory() stringByAppendingPathComponent:name];
    [[rep representationUsingType:NSPNGFileType properties:[NSDictionary dictionary]] writeToFile:path
                                                                                       atomically:NO];
    return [NSURL fileURLWithPath:path];
}

class LxMorphObjectTest : public testing::Test {
protected:
    NSURL *url = pictureFile();
    LxMorphObject *object = [[[LxMorphObject alloc] initWithImageURL:url] autorelease];

    ~LxMorphObjectTest() override {
        [[NSFileManager defaultManager] removeFileAtPath:[url path] handler:nil];
    }
};

} // namespace

TEST_F(LxMorphObjectTest, BeginsWithThePictureAndNoPoints) {
    ASSERT_NE([object image], nil);
    EXPECT_EQ([firstRep([object image]) pixelsWide], 6);
    EXPECT_EQ(planeOf(firstRep([object image]))[1], 8);
    ASSERT_NE([object points], nil);
    EXPECT_EQ([[object points] count], 0u);
}

TEST_F(LxMorphObjectTest, HasNoPictureWhereNoneCanBeRead) {
    LxMorphObject *without = [[[LxMorphObject alloc] initWithImageURL:nil] autorelease];
    EXPECT_EQ([without image], nil);
    EXPECT_EQ([[without points] count], 0u);
    LxMorphObject *missing = [[[LxMorphObject alloc]
        initWithImageURL:[NSURL fileURLWithPath:@"/nonexistent/picture.png"]] autorelease];
    EXPECT_EQ([missing image], nil);
}

TEST_F(LxMorphObjectTest, AddsAndClearsPoints) {
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    for (int i = 0; i < 5; ++i)
        [object addPoint:NSMakePoint(i, i * 2.5)];
    [pool drain];
    ASSERT_EQ([[object points] count], 5u);
    const NSPoint last = [[[object points] objectAtIndex:4] pointValue];
    EXPECT_EQ(last.x, 4);
    EXPECT_EQ(last.y, 10);
    [object removePoint:NSMakePoint(4, 10)];
    EXPECT_EQ([[object points] count], 5u);
    [object clearPoints];
    EXPECT_EQ([[object points] count], 0u);
}

TEST_F(LxMorphObjectTest, SurvivesAnArchive) {
    for (int i = 0; i < 3; ++i)
        [object addPoint:NSMakePoint(i + 0.5, -i)];
    NSData *data = [NSArchiver archivedDataWithRootObject:object];
    LxMorphObject *back = [NSUnarchiver unarchiveObjectWithData:data];
    ASSERT_NE(back, nil);
    ASSERT_EQ([[back points] count], 3u);
    EXPECT_EQ([[[back points] objectAtIndex:2] pointValue].x, 2.5);
    EXPECT_EQ([[[back points] objectAtIndex:2] pointValue].y, -2);
    ASSERT_NE([back image], nil);
    EXPECT_EQ([[back image] size].width, 6);
    [back addPoint:NSMakePoint(0, 0)];
    EXPECT_EQ([[back points] count], 4u);
}
