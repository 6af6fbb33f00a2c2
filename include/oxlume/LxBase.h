/* What every public header stands on: integer types, linkage, and the macros of the boundary.
 *
 * Conventions of the whole boundary:
 * - Value types are plain structures, passed and returned by value unless a declaration takes a pointer.
 * - A yes or no is an int32_t, 1 or 0.
 * - A null record is a no-op or a zero answer, as each declaration says; pointers to results are written
 *   without a test unless it says otherwise.
 * - The library starts no thread and takes no lock of its own accord. Functions on value types may be called
 *   from any thread; creation and deletion of images, sheen renders and software fills belong to one thread
 *   at a time.
 *
 * Constructors that bear the name of their type, such as LxPointL(3, 4), are function-like macros over the
 * exported function of that very name; the bare name is always the type. In a declarator that puts a
 * parenthesis right after the type's name, as a pointer to function does, write "struct LxPointL".
 */
#ifndef OXLUME_LXBASE_H
#define OXLUME_LXBASE_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define LX_BEGIN_DECLS extern "C" {
#define LX_END_DECLS }
#else
#define LX_BEGIN_DECLS
#define LX_END_DECLS
#endif

/* Marks an exported function or constant. */
#define LX_API __attribute__((visibility("default")))

/* Gives a declaration the linker name `name`, which a type of that name keeps from standing there itself. */
#define LX_EXPORTED_AS(name) __asm__(LX_STRINGIFY_(__USER_LABEL_PREFIX__) name)
#define LX_STRINGIFY_(text) LX_STRINGIFY_AGAIN_(text)
#define LX_STRINGIFY_AGAIN_(text) #text

#endif
