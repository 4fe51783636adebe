#pragma once

#include <ZEL/Export.h>

extern "C" {

/// What a debugger shows of a handle: `ZEL.Class [id = 2] "Book"`, or what is wrong with it.
///
/// `body` and `deviant` are the two words of the handle, whatever they hold: null, the body of a dead model, a removed
/// deviant, or what was in the memory before the handle was made. An address that does not lie in a live object is not
/// looked at; an object that was made while `Cleanup` did not track counts as none. Never throws, and changes nothing
/// that a program can see. The text stays until the next call. Linear in the number of deviants that the process has
/// had.
ZEL_API char const * zel_describe_handle(void const * body, void const * deviant) noexcept;
}
