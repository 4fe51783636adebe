#include <ZEL/Initialize.h>

int main() { return ZEL::initialize() ? 0 : 1; }
