#pragma once

/// Marks what the library shows to its users; everything else of it stays hidden.
///
/// A class carries it between its key and its name, a function before its type. It means the same on both sides of the
/// library's border: a user who catches or casts to a class needs the same type information as the library.
#define ZEL_API __attribute__((visibility("default")))
