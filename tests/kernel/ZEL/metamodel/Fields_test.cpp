#include <ZEL/metamodel/Fields.h>
#include <ZEL/metamodel/SeldomFields.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace ZEL::tests {
namespace {

using internal::TextField;

/// Around the longest text that stands in the field, and far from it.
constexpr std::size_t kSizes[] = {0, 1, TextField::kShort, TextField::kShort + 1, TextField::kShort + 2, 1000};

std::string textOfSize(std::size_t size, char first = 'a') {
    std::string text;
    for (std::size_t i = 0; i < size; ++i) {
        text += static_cast<char>(first + i % 20);
    }
    return text;
}

TEST(TextField, ACopyAndItsOriginalChangeApart) {
    for (std::size_t const size : kSizes) {
        std::string const text = textOfSize(size);
        for (std::size_t const newSize : kSizes) {
            std::string const newText = textOfSize(newSize, 'A');
            TextField original{text};
            TextField copy = original;
            copy.set(newText);
            EXPECT_EQ(text, original.view());
            EXPECT_EQ(newText, copy.view());
            EXPECT_EQ(newSize == 0, copy.isEmpty());
            copy = original;
            original.set(newText);
            EXPECT_EQ(text, copy.view());
            EXPECT_EQ(text, TextField(std::move(copy)).view());
        }
    }
}

TEST(TextField, CanBeSetToAPartOfItself) {
    for (std::size_t const size : kSizes) {
        std::string const text = textOfSize(size);
        for (std::size_t const partSize : kSizes) {
            for (std::size_t begin = 0; begin + partSize <= size && begin < 3; ++begin) {
                TextField field{text};
                field.set(field.view().substr(begin, partSize));
                EXPECT_EQ(text.substr(begin, partSize), field.view()) << size;
            }
        }
    }
}

struct Few {
    TextField text{"initial"};
    int number = 3;
};

TEST(SeldomFields, WhoWritesHasValuesOfItsOwn) {
    using Fields = internal::SeldomFields<Few>;
    Fields const unwritten;
    EXPECT_FALSE(unwritten.isWritten());
    EXPECT_EQ("initial", unwritten->text.view());

    Fields first = unwritten;
    first.write().number = 4;
    EXPECT_EQ(3, unwritten->number);
    EXPECT_EQ("initial", first->text.view()) << "what was not written is as it was";

    Fields second = first;
    EXPECT_EQ(&*first, &*second);
    second.write().text.set("second");
    EXPECT_EQ("initial", first->text.view());
    EXPECT_EQ(4, second->number);

    Fields third = std::move(second);
    second = third;
    first = unwritten;
    EXPECT_FALSE(first.isWritten());
    third = Fields();
    EXPECT_EQ("second", second->text.view());
    Few const * const own = &*second;
    EXPECT_EQ(own, &second.write()) << "nobody else has them any more";
}

struct WithoutText {
    internal::PersistentSequence sequence;
    TextField empty;
    unsigned char bits : 2 = 3;
};

TEST(SeldomFields, InitialValuesAreAConstantIfTheyCanBe) {
    static_assert(internal::InitialFields<WithoutText>::values().bits == 3);
    internal::SeldomFields<WithoutText> const unwritten;
    EXPECT_EQ(3, unwritten->bits);
    EXPECT_TRUE(unwritten->sequence.empty());
}

} // namespace
} // namespace ZEL::tests
