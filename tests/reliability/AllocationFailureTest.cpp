// What happens when memory runs out in the middle: at every allocation of ten scenes, once and for good.

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <oxlume/oxlume.h>

#include "foundation/Memory.h"
#include "sheen/Sheen.h"
#include "tests/reliability/FailingAllocations.h"
#include "tests/reliability/Scenes.h"

using namespace lx::test;

namespace {

struct Drawn {
    bool picture;
    int64_t asked; // how many allocations there were
    int64_t kept;  // blocks taken and not returned
};

// Draws the scene between a start and an end of the library, so that nothing is kept in pools.
Drawn drawWith(const Scene &scene, int64_t failing, bool onwards) {
    const int64_t before = blocksAlive() - lx::allocationCount(); // which starts anew with the library
    Oxlume_Init();
    Drawn drawn;
    {
        const FailingAllocations allocations(failing, onwards);
        LxImage *picture = scene.draw();
        drawn = {picture != nullptr, allocations.asked(), 0};
        LxImage_Delete(picture);
    }
    Oxlume_Term();
    drawn.kept = blocksAlive() - before;
    return drawn;
}

// The same in a process of its own, for a scene that may end it. Answers the exit status: 0 where nothing
// leaked.
int statusOfDrawing(const Scene &scene, int64_t failing, bool onwards) {
    const pid_t child = fork();
    if (child == 0) {
        const int nothing = open("/dev/null", O_WRONLY);
        dup2(nothing, STDERR_FILENO);
        _exit(drawWith(scene, failing, onwards).kept == 0 ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class AllocationFailure : public testing::TestWithParam<Scene> {
protected:
    // Fails each allocation in turn; the scene has to come back, and to return all it took.
    void failEach(bool onwards) {
        const Scene &scene = GetParam();
        drawWith(scene, FailingAllocations::never, false); // fills what is kept for the life of the process
        const Drawn whole = drawWith(scene, FailingAllocations::never, false);
        ASSERT_TRUE(whole.picture);
        ASSERT_GT(whole.asked, 0);
        RecordProperty("allocations", static_cast<int>(whole.asked));
        ASSERT_EQ(whole.kept, 0) << "the scene itself does not clean up";
        for (int64_t failing = 0; failing < whole.asked; ++failing) {
            SCOPED_TRACE(testing::Message() << "allocation " << failing << " of " << whole.asked);
            if (scene.mayEndProcess)
                ASSERT_TRUE(comesBackOrEnds(scene, failing, onwards));
            else
                ASSERT_EQ(drawWith(scene, failing, onwards).kept, 0);
        }
        const Drawn again = drawWith(scene, FailingAllocations::never, false);
        EXPECT_TRUE(again.picture) << "the library recovers";
        EXPECT_EQ(again.asked, whole.asked);
    }

    // On purpose, the SVG scanner ends the process with status 2 where it finds no memory for a text.
    static bool comesBackOrEnds(const Scene &scene, int64_t failing, bool onwards) {
        const int status = statusOfDrawing(scene, failing, onwards);
        return status == 0 || status == 2;
    }
};

} // namespace

TEST_P(AllocationFailure, OnceAtAnyAllocationLeaksNothing) {
    failEach(false);
}

TEST_P(AllocationFailure, FromAnyAllocationOnwardsLeaksNothing) {
    failEach(true);
}

INSTANTIATE_TEST_SUITE_P(Scenes, AllocationFailure, testing::ValuesIn(scenes()),
                         [](const testing::TestParamInfo<Scene> &info) {
                             std::string name;
                             for (const char *c = info.param.name; *c != '\0'; ++c)
                                 name += *c == ' ' ? '_' : *c;
                             return name;
                         });

TEST(SheenOutOfMemory, ALayerIsAddedToBothDescriptorsOrToNone) {
    const char *const name = "a name too long to stand in a text's own record";
    bool added = false;
    for (int64_t failing = 0; !added; ++failing) {
        SCOPED_TRACE(testing::Message() << "allocation " << failing);
        LxSheen *const sheen = LxSheen_Create(4);
        ASSERT_NE(sheen, nullptr);
        ASSERT_EQ(LxSheen_AddLayer(sheen, name), 1);
        sheen->descriptors[0].SetCurrentLayer(0);
        {
            const FailingAllocations allocations(failing, true);
            added = LxSheen_AddLayer(sheen, name) == 2;
        }
        EXPECT_EQ(sheen->descriptors[0].LayerCount(), added ? 3 : 2);
        EXPECT_EQ(sheen->descriptors[1].LayerCount(), added ? 3 : 2);
        EXPECT_EQ(sheen->descriptors[0].currentLayer, added ? 2 : 0);
        EXPECT_EQ(sheen->descriptors[1].currentLayer, added ? 2 : 1);
        LxSheen_Delete(sheen);
    }
}
