/* Sheens: procedural surfaces, stacked in layers, composited and lit into a picture.
 *
 * A layer is a plateau with a bevelled rim, bent, folded, arched and roughened by what 76 numbers say: its
 * parameters, each addressed by its index 0 to 75. LxSheen_LayerValueParameter tells a parameter's label and
 * limits. An object holds two descriptors, 0 and 1: the two end states of a blend. Each is a stack of layers,
 * bottom first, with values of its own; a layer that is added lands in both.
 *
 * Edit the layers of the current descriptor, then render. Nothing renders by itself, except that
 * LxSheen_Create, LxSheen_SetSize and LxSheen_SetScale do. A render samples the layers whose values changed
 * and composites them all: its cost grows with the pixels.
 *
 * In the functions that take a `layer`, a negative one means the object's current layer, and the layer is
 * looked up in the current descriptor. With a null object, a layer that is not there or a parameter beyond
 * 75, readers answer 0 or null and writers do nothing.
 *
 * An object belongs to one thread at a time, and since all share one noise, only one may be made, changed or
 * rendered at a time. */
#ifndef OXLUME_LXSHEEN_H
#define OXLUME_LXSHEEN_H

#include <oxlume/LxBase.h>
#include <oxlume/LxColor.h>
#include <oxlume/LxImage.h>

LX_BEGIN_DECLS

typedef struct _LxSheen LxSheen; /* An opaque object. */

/* ---- Creation and deletion ---- */

/* A new object of `size` by `size` pixels, with one layer named "no name" in each descriptor, rendered. Any
 * size is taken; where images of it cannot be made there are no pictures. Null if memory is short. Seeds the
 * C library's rand, as everything does that makes a layer. */
LX_API LxSheen *LxSheen_Create(int32_t size);

/* Releases the object and all its images. */
LX_API void LxSheen_Delete(LxSheen *sheen);

/* ---- Descriptors and layers ---- */

/* Appends a layer of default values, white and named `name` (copied; null is taken as empty), to both
 * descriptors, each of which makes it its own current layer; the object's current layer stays. Answers its
 * index in descriptor 0, or -1 if memory is short: then nothing has changed. Seeds rand. */
LX_API int32_t LxSheen_AddLayer(LxSheen *sheen, const char *name);

/* On purpose removes nothing: it only looks the index up, as it stands, in descriptor 0 and if found there in
 * descriptor 1. The pointer tells whether the last lookup found a layer, and is good for nothing else. */
LX_API void *LxSheen_RemoveLayer(LxSheen *sheen, int32_t layer);

/* How many layers the current descriptor has. */
LX_API int32_t LxSheen_NumberOfLayers(const LxSheen *sheen);

/* Takes 0 or 1; ignores other numbers. */
LX_API void LxSheen_SetCurrentDescriptor(LxSheen *sheen, uint32_t descriptor);
LX_API uint32_t LxSheen_CurrentDescriptor(const LxSheen *sheen);

/* Makes a layer the current one of the current descriptor if the index, taken as it stands, is in range; then
 * makes that descriptor's current layer the object's and answers it. */
LX_API int32_t LxSheen_SetCurrentLayer(LxSheen *sheen, int32_t layer);

/* The current layer of descriptor 0, whichever descriptor is current. */
LX_API int32_t LxSheen_CurrentLayer(const LxSheen *sheen);

/* ---- A layer's values ---- */

/* Stores a value. A parameter that takes whole numbers rounds it; nothing clamps it. */
LX_API void LxSheen_SetLayerValue(LxSheen *sheen, int32_t layer, uint32_t parameter, double value);
LX_API double LxSheen_LayerValue(const LxSheen *sheen, int32_t layer, uint32_t parameter);

/* Tells what an editor of a parameter needs: its value held to its limits, the limits, and in `continuous` 1
 * or, for one that takes whole numbers, 0. Answers its label, which lives as long as the library, or null
 * with nothing stored if there is no such layer. A null result is not stored to. */
LX_API const char *LxSheen_LayerValueParameter(const LxSheen *sheen, int32_t layer, uint32_t parameter,
                                               double *value, double *minimum, double *maximum,
                                               int32_t *continuous);

/* Stores the layer's colour. Shows from the next render on. */
LX_API void LxSheen_SetLayerColor(LxSheen *sheen, int32_t layer, LxRGBA color);

/* The name is copied (null is taken as empty). What is answered is the layer's own, valid until the name
 * changes or the object goes. */
LX_API void LxSheen_SetLayerName(LxSheen *sheen, int32_t layer, const char *name);
LX_API const char *LxSheen_LayerName(const LxSheen *sheen, int32_t layer);

/* ---- Size and scale ---- */

/* Resizes both descriptors to `size` by `size` pixels, dropping their pictures, and renders them. On purpose
 * also sets the scale: to 1, or to 0.01 for a size below 1. */
LX_API void LxSheen_SetSize(LxSheen *sheen, int32_t size);
LX_API int32_t LxSheen_Size(const LxSheen *sheen);

/* Stores the scale, held to 0.01 to 1, drops the pictures and renders. The scale is for the caller to read.
 */
LX_API void LxSheen_SetScale(LxSheen *sheen, double scale);
LX_API double LxSheen_Scale(const LxSheen *sheen);

/* Sizes the object's store of layers for interpolation, which nothing reads. Does nothing if it has that many
 * entries; below 1 it becomes empty, as it does if memory is short. */
LX_API void LxSheen_SetInterpolationStep(LxSheen *sheen, int32_t steps);

/* ---- Pictures ----
 *
 * They belong to the object and live until its size or scale changes or it goes. A picture that a later
 * render replaces stays as it was until then; the heights are those of the last render and go with the next.
 */

/* Renders descriptor 0 or 1 unless `render` is 0, and answers its lit picture; null for another descriptor. A
 * descriptor with no enabled layer keeps its pictures, cleared. */
LX_API LxImage *LxSheen_RenderDescriptor(LxSheen *sheen, uint32_t descriptor, int32_t render);

/* The composite heights of the current descriptor, a kLxPixelF image of values 0 to 1. */
LX_API LxImage *LxSheen_FloatImage(LxSheen *sheen);

/* The lit picture of the current descriptor, a kLxPixelRGBA image; its outermost pixels are transparent. */
LX_API LxImage *LxSheen_Image(LxSheen *sheen);

LX_END_DECLS

#endif
