#pragma once

// The text value stands in `values`, since every object and value has a text; here is its place among the others.
#include <ZEL/values/String.h>
