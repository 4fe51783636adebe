#include <libvx/Externalizable.h>
#include <libvx/Handler.h>
#include <libvx/Logger.h>
#include <libvx/ObjectOutput.h>
#include <libvx/SimpleFormatter.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

namespace Quillon::System::tests {
namespace {

class Record : public Externalizable {
public:
    void writeExternal(ObjectOutput & out) const override {
        out.writeString("x");
        out.writeString("\n");
    }
};

class Recorder : public Handler {
public:
    Recorder(std::string name, std::string & seen) : fName(std::move(name)), fSeen(seen) {
        setFormatter(new SimpleFormatter);
    }
    void _publish(Level const & level, Externalizable const & record) override {
        fSeen += fName + std::to_string(level.value()) + getFormatter()->format(record);
        if (onPublish) {
            onPublish();
        }
    }

    std::function<void()> onPublish;

private:
    std::string fName;
    std::string & fSeen;
};

class LoggerTest : public testing::Test {
protected:
    /// What the handlers make of a record.
    std::string reported(Level const & level = Level::Info) {
        seen.clear();
        logger.report(Record(), level);
        return seen;
    }

    std::string seen;
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
    EXPECT_EQ(reported(Level::Warning), "b127x\na127x\n");
    logger.removeHandler(&b);
    logger.removeHandler(&b);
    EXPECT_EQ(reported(), "a64x\n");
}

TEST_F(LoggerTest, DyingHandlersAndLoggersLeaveEachOther) {
    {
        Logger second;
        second.addHandler(&a);
        Recorder dying("d", seen);
        logger.addHandler(&dying);
        logger.addHandler(&a);
    }
    EXPECT_EQ(reported(), "a64x\n");
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
    EXPECT_EQ(reported(), "a64x\n");
    EXPECT_EQ(reported(), "c64x\n");
}

} // namespace
} // namespace Quillon::System::tests
