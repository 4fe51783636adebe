#include <ZEL/logging/Now.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace ZEL::util {

std::string now() {
    using std::chrono::microseconds;
    constexpr std::array<char const *, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    auto const sinceEpoch =
        std::chrono::duration_cast<microseconds>(std::chrono::system_clock::now().time_since_epoch()).count();
    std::time_t const seconds = sinceEpoch / 1'000'000;
    std::tm time{};
    ::gmtime_r(&seconds, &time);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%s-%02d %02d:%02d:%02d.%06d", time.tm_year + 1900,
                  months.at(static_cast<std::size_t>(time.tm_mon)), time.tm_mday, time.tm_hour, time.tm_min,
                  time.tm_sec, static_cast<int>(sinceEpoch % 1'000'000));
    return text.data();
}

} // namespace ZEL::util
