#pragma once

#include <ZEL/logging/DefaultLogHandler.h>
#include <ZEL/logging/LogRecord.h>
#include <ZEL/logging/Logger.h>

#include <string>
#include <vector>

namespace ZEL::tests {

/// Keeps what is logged while it lives, and keeps it off the terminal.
class LogCapture : public DefaultLogHandler {
public:
    LogCapture() : DefaultLogHandler(nullptr, nullptr, LogLevel::all) {
        Logger::instance()->setDefaultHandlerLevel(LogLevel::off);
        Logger::instance()->addHandler(this, LogLevel::all);
    }
    ~LogCapture() override {
        Logger::instance()->removeHandler(this);
        Logger::instance()->setDefaultHandlerLevel(LogLevel::info);
    }
    void _publish(Quillon::System::Level const &, Quillon::System::Externalizable const & record) override {
        auto const & entry = dynamic_cast<LogRecord const &>(record);
        fEntries.push_back({entry.getLevel().getLevel(), entry.getMessage()});
    }

    /// The texts of at least this level.
    [[nodiscard]] std::vector<std::string> texts(int level = LogLevel::warning) const {
        std::vector<std::string> result;
        for (auto const & [entryLevel, text] : fEntries) {
            if (entryLevel >= level) {
                result.push_back(text);
            }
        }
        return result;
    }
    void clear() { fEntries.clear(); }

private:
    std::vector<std::pair<int, std::string>> fEntries;
};

} // namespace ZEL::tests
