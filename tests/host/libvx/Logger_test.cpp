#include <libvx/Externalizable.h>
#include <libvx/Handler.h>
#include <libvx/Logger.h>
#include <libvx/ObjectOutput.h>
#include <libvx/SimpleFormatter.h>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace Quillon::System;
using testing::ElementsAre;

class Record : public Externalizable {
public:
    explicit Record(std::string text) : fText(std::move(text)) {}
    void writeExternal(ObjectOutput & out) const override {
        out.writeString(fText);
        out.writeString("\n");
    }

private:
    std::string fText;
};

class Recorder : public Handler {
public:
    Recorder(std::string name, std::vector<std::string> & seen) : fName(std::move(name)), fSeen(seen) {
        setFormatter(new SimpleFormatter);
    }
    void _publish(Level const & level, Externalizable const & record) override {
        fSeen.push_back(fName + std::to_string(level.value()) + getFormatter()->format(record));
        if (onPublish) {
            onPublish();
        }
    }

    std::function<void()> onPublish;

private:
    std::string fName;
    std::vector<std::string> & fSeen;
};

struct LoggerTest : testing::Test {
    std::vector<std::string> seen;
    Logger logger;
    Recorder a{"a", seen};
    Recorder b{"b", seen};
};

TEST_F(LoggerTest, CallsEachHandlerOnceInTheOrderOfAddition) {
    logger.addHandler(&b);
    logger.addHandler(&a);
    logger.addHandler(&b);
    logger.addHandler(nullptr);
    logger.setLevel(Level::Off); // for the handlers to heed
    logger.report(Record("x"), Level::Warning);
    EXPECT_THAT(seen, ElementsAre("b127x\n", "a127x\n"));
}

TEST_F(LoggerTest, CallsARemovedHandlerNoMore) {
    logger.addHandler(&a);
    logger.addHandler(&b);
    logger.removeHandler(&a);
    logger.removeHandler(&a);
    logger.report(Record("x"), Level::Info);
    EXPECT_THAT(seen, ElementsAre("b64x\n"));
}

TEST_F(LoggerTest, ADyingHandlerTakesItselfOut) {
    auto dying = std::make_unique<Recorder>("d", seen);
    logger.addHandler(dying.get());
    logger.addHandler(&a);
    dying.reset();
    logger.report(Record("x"), Level::Info);
    EXPECT_THAT(seen, ElementsAre("a64x\n"));
}

TEST_F(LoggerTest, ADyingLoggerLeavesItsHandlersAlive) {
    {
        Logger second;
        second.addHandler(&a);
    }
    logger.addHandler(&a);
    logger.report(Record("x"), Level::Info);
    EXPECT_THAT(seen, ElementsAre("a64x\n"));
}

TEST_F(LoggerTest, HandlersMayChangeTheListWhileTheyPublish) {
    Recorder c("c", seen);
    logger.addHandler(&a);
    logger.addHandler(&b);
    a.onPublish = [&] {
        logger.removeHandler(&a);
        logger.removeHandler(&b);
        logger.addHandler(&c);
    };
    logger.report(Record("x"), Level::Info);
    EXPECT_THAT(seen, ElementsAre("a64x\n"));
    logger.report(Record("y"), Level::Info);
    EXPECT_THAT(seen, ElementsAre("a64x\n", "c64y\n"));
}

} // namespace
