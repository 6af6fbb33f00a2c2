// Field morphing: an image warped by pairs of control lines, after Beier and Neely (1992). Each pixel of the
// result looks up its source through a weighted sum of the displacements that all lines propose.
#pragma once

#include <cstddef>
#include <cstdint>

#include <oxlume/LxExtras.h>

extern "C" {

// Warps `source` into `destination`, which has its size and type, in `frameCount` frames: in frame f the
// lines have gone f / frameCount of the way from `sourceLines` to `targetLines`, arrays of `lineCount`. Every
// frame overwrites the one before, so the last remains. Handles kLxPixelA and kLxPixelRGB, in tightly packed
// rows; other types stay as they are. Writes a progress line to standard output for every row of every frame.
// Answers the frame counter after the last frame, frameCount + 1; below one frame, or where an image or an
// array of lines is null or its pixels do not fit the source's size, nothing happens and the answer is
// `frameCount`.
int32_t LxMorphFrames(LxImage *source, LxImage *destination, const LxMorphLine *sourceLines,
                      const LxMorphLine *targetLines, int32_t lineCount, int32_t frameCount);
}
