#pragma once

namespace ZEL::tests {

#ifdef ZEL_SANITIZED
inline constexpr bool kIsSanitized = true;
#else
inline constexpr bool kIsSanitized = false;
#endif

/// How many of `rounds` a test does: fewer in a build with sanitizers, where each takes ten times as long.
constexpr int longRun(int rounds, int sanitizedPart = 10) { return kIsSanitized ? rounds / sanitizedPart : rounds; }

} // namespace ZEL::tests
