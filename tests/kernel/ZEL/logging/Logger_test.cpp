#include <ZEL/logging/DefaultLogHandler.h>
#include <ZEL/logging/LogRecord.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/serializer/Messages.h>

#include <libvx/Filter.h>
#include <libvx/MessageCatalogue.h>
#include <libvx/Printing.h>
#include <libvx/StringObjectOutput.h>

#include <gmock/gmock.h>

#include <cstdio>

namespace ZEL::tests {
namespace {

/// Keeps the records that come through.
struct Recorder : DefaultLogHandler {
    explicit Recorder(LogLevel const & level = LogLevel::all) : DefaultLogHandler(nullptr, nullptr, level) {}
    void _publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) override {
        if (isLoggable(level, record)) {
            auto const & message = dynamic_cast<LogRecord const &>(record).getMessage();
            rows.push_back(std::string(getLevelName(level, record)) + ": " + message);
        }
    }
    [[nodiscard]] std::string last() const { return rows.empty() ? "(none)" : rows.back(); }

    std::vector<std::string> rows; ///< "Info: text"
};

/// What `action` prints on the terminal.
template <class Action> std::string printedBy(Action action) {
    std::FILE * const file = std::tmpfile();
    vx::setPrintStream(file);
    action();
    vx::setPrintStream(nullptr);
    std::rewind(file);
    std::string text(4096, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file));
    std::fclose(file);
    return text;
}

/// A quiet terminal, and a recorder that takes everything.
struct LoggerTest : testing::Test {
    LoggerTest() {
        logger.setDefaultHandlerLevel(LogLevel::off);
        logger.addHandler(&recorder, LogLevel::all);
    }
    ~LoggerTest() override { logger.setLevel(LogLevel::info); }

    Logger & logger = *Logger::instance();
    Recorder recorder;
};

TEST(LogLevel, HasANameAndAHostLevel) {
    std::tuple<LogLevel::Setting, int, char const *, int> const rows[] = {
        {LogLevel::all, 0, "All", 0},
        {LogLevel::trace, 62, "Trace", 64},
        {LogLevel::debug, 63, "Debug", 64},
        {LogLevel::info, 64, "Info", 64},
        {LogLevel::warning, 127, "Warning", 127},
        {LogLevel::error, 192, "Error", 192},
        {LogLevel::fatal, 193, "Fatal", 192},
        {LogLevel::off, 255, "Off", 255},
        {static_cast<LogLevel::Setting>(100), 100, "Unknown FLevel", 100},
    };
    for (auto const & [setting, number, name, hostNumber] : rows) {
        LogLevel const level = setting;
        EXPECT_EQ(number, level.getLevel());
        EXPECT_STREQ(name, level.getName());
        EXPECT_STREQ(name, level.toString());
        EXPECT_EQ(hostNumber, LogLevel::tolevel(setting));
        Quillon::System::Level const host = level;
        EXPECT_EQ(hostNumber, host.value());
        EXPECT_EQ(number, level.operator Quillon::System::Level().value());
    }
    LogLevel assigned = LogLevel::off;
    assigned = Quillon::System::Level(Quillon::System::Level::Error);
    EXPECT_STREQ("Error", assigned.getName());
}

TEST(LogRecord, IsOffAndPlainUntilSetAndWritesItsMessage) {
    LogRecord record;
    EXPECT_EQ(LogLevel::off, record.getLevel().getLevel());
    EXPECT_EQ(0, record.getTag());
    record.setMessage("text");
    Quillon::System::StringObjectOutput out;
    record.writeExternal(out);
    EXPECT_EQ("text\n", out.text());
}

TEST_F(LoggerTest, FillsArgumentsIntoFormats) {
    std::string const percent = "100%s";
    logger.log("plain");
    logger.log(LogLevel::warning, "%s and %s, %d, %u", percent, String("text"), -1, 7u);
    logger.error("%2 before %1", "b", "a");
    logger.fatal("50%% of %s and %s", "it");
    char const * const none = nullptr;
    logger.log(none);
    logger.info("%s", none);
    logger.trace("t");
    logger.debug("d");
    logger.warning("w");
    EXPECT_THAT(recorder.rows,
                testing::ElementsAre("Info: plain", "Warning: 100%s and text, -1, 7", "Error: a before b",
                                     "Fatal: 50% of it and %s", "Info: (null)", "Trace: t", "Debug: d", "Warning: w"));
}

void logThrough(Logger & logger, char const * format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    logger.vreportsf(LogLevel::info, format, arguments);
    va_end(arguments);
}

TEST_F(LoggerTest, CutsLongMessagesBetweenCharacters) {
    logger.log(LogLevel::info, "%s", std::string(5000, 'x'));
    EXPECT_EQ("Info: " + std::string(4095, 'x'), recorder.last());
    std::string umlauts = "x";
    for (int i = 0; i < 2500; ++i) {
        umlauts += "\xC3\xA4";
    }
    logger.log(LogLevel::info, "%s", umlauts);
    EXPECT_EQ("Info: " + umlauts.substr(0, 4095), recorder.last());
    logger.log(LogLevel::info, "y%s", umlauts);
    EXPECT_EQ("Info: y" + umlauts.substr(0, 4093), recorder.last()) << "not within a character";
    logThrough(logger, "%s %05d", "number", 42);
    EXPECT_EQ("Info: number 00042", recorder.last());
    logThrough(logger, "%s", std::string(5000, 'z').c_str());
    EXPECT_EQ("Info: " + std::string(4095, 'z'), recorder.last());
}

TEST_F(LoggerTest, TakesMessagesOfTheCatalogueInTheCurrentLanguage) {
    Messages::addToCatalogue();
    logger.log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_EmptyValueElement, "p", "o");
    EXPECT_EQ("Info: Read empty value for property p of object o", recorder.last());
    vx::setCurrentLanguage("ja");
    logger.log(LogLevel::info, Messages::ZEL_Serializer_XmiReader_EmptyValueElement, "p", "o");
    EXPECT_EQ("Info: オブジェクト o のプロパティ p に対して空の値を読み込みます", recorder.last());
    vx::setCurrentLanguage("en");
    logger.log(LogLevel::info, 0x6D001Bul, "dropped");
    logger.log(LogLevel::info, 0x16D0001ul << 8, "dropped");
    EXPECT_EQ(2u, recorder.rows.size());
}

TEST_F(LoggerTest, LetsHandlersDecideByTheirLevelAndFilter) {
    struct Short : Quillon::System::Filter {
        bool isLoggable(Quillon::System::Level const &, Quillon::System::Externalizable const & record) const override {
            return dynamic_cast<LogRecord const &>(record).getMessage().size() < 9;
        }
    } filter;
    recorder.setFilter(&filter);
    logger.addHandler(&recorder, LogLevel::warning);
    logger.info("not this");
    logger.warning("this");
    logger.error("too long a text");
    logger.error("and this");
    EXPECT_EQ(LogLevel::warning, recorder.getZelLevel().getLevel());
    EXPECT_EQ(127, recorder.getLevel().value());
    logger.removeHandler(&recorder);
    logger.error("no more");
    logger.addHandler(nullptr, LogLevel::all);
    EXPECT_THAT(recorder.rows, testing::ElementsAre("Warning: this", "Error: and this"));
}

TEST_F(LoggerTest, AnswersWhatItsOwnLevelLetsThrough) {
    logger.setLevel(LogLevel::warning);
    EXPECT_EQ(LogLevel::warning, logger.getLevel().getLevel());
    EXPECT_EQ(LogLevel::warning, logger.getDefaultHandlerLevel(LogLevel::off).getLevel());
    EXPECT_FALSE(logger.isLoggable(LogLevel::info));
    EXPECT_TRUE(logger.isLoggable(LogLevel::warning) && logger.isLoggable(LogLevel::fatal));
    EXPECT_FALSE(logger.isLoggable(LogLevel::off));
    logger.setLevel(LogLevel::off);
    EXPECT_FALSE(logger.isLoggable(LogLevel::all));
    EXPECT_FALSE(logger.isLoggable(LogLevel::fatal) || logger.isLoggable(LogLevel::off));
    logger.setDefaultHandlerLevel(LogLevel::off);
}

TEST_F(LoggerTest, PrintsLinesOnTheTerminalAndWithTheTimeByDefault) {
    logger.setDefaultHandlerLevel(LogLevel::warning);
    EXPECT_EQ("[Warning] 100%\n", printedBy([&] {
                  logger.info("not this");
                  logger.warning("100%");
              }));
    DefaultLogHandler plain(nullptr, nullptr, LogLevel::all);
    logger.addHandler(&plain, LogLevel::all);
    EXPECT_THAT(printedBy([&] { logger.debug("text"); }),
                testing::MatchesRegex("[0-9]{4}-[A-Z][a-z]{2}-[0-9]{2} [0-9:]{8}\\.[0-9]{6} \\[Debug\\] text\n"));
}

TEST_F(LoggerTest, HandlersRefuseWhatIsNoLogRecord) {
    struct Other : Quillon::System::Externalizable {
        void writeExternal(Quillon::System::ObjectOutput &) const override {}
    };
    DefaultLogHandler plain(nullptr, nullptr, LogLevel::all);
    EXPECT_THROW(plain._publish(LogLevel(LogLevel::info), Other()), std::bad_cast);
}

} // namespace
} // namespace ZEL::tests
