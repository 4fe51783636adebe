#pragma once

/// Marks what a host library exports from the shared library that it is compiled into.
#define HOST_API __attribute__((visibility("default")))
