#include <ZEL/logging/DefaultLogHandler.h>
#include <ZEL/logging/LogRecord.h>
#include <ZEL/logging/Now.h>

#include <libvx/Filter.h>
#include <libvx/Printing.h>
#include <libvx/SimpleFormatter.h>

#include <string>

namespace ZEL {

DefaultLogHandler::DefaultLogHandler(Quillon::System::Formatter * formatter, Quillon::System::Filter * filter,
                                     LogLevel const & level)
    : fLevel(level) {
    setFormatter(formatter != nullptr ? formatter : new Quillon::System::SimpleFormatter);
    setFilter(filter);
    setZelLevel(level);
}

void DefaultLogHandler::setZelLevel(LogLevel const & level) {
    fLevel = level;
    setLevel(level);
}

void DefaultLogHandler::_publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) {
    if (isLoggable(level, record)) {
        std::string const text =
            util::now() + " [" + getLevelName(level, record) + "] " + getFormatter()->format(record);
        vxPrintf("%s", text.c_str());
    }
}

bool DefaultLogHandler::isLoggable(Quillon::System::Level const & level,
                                   Quillon::System::Externalizable const & record) const {
    if (fLevel.getLevel() > dynamic_cast<LogRecord const &>(record).getLevel().getLevel()) {
        return false;
    }
    return getFilter() == nullptr || getFilter()->isLoggable(level, record);
}

char const * DefaultLogHandler::getLevelName(Quillon::System::Level const &,
                                             Quillon::System::Externalizable const & record) const {
    return dynamic_cast<LogRecord const &>(record).getLevel().getName();
}

} // namespace ZEL
