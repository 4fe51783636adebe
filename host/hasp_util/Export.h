#pragma once

/// Marks what a host library shows outside of the shared library that it is compiled into.
#define HOST_API __attribute__((visibility("default")))
