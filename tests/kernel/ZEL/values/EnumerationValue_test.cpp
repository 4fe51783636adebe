#include "support/ValueTypes.h"

#include <ZEL/values/ValueObjectFactory.h>

#include <hasp_util/ErrorHolder.h>

#include <exception>
#include <map>

namespace library {

/// A kind as an application's metamodel has it.
struct Colour : ZEL::EnumerationValue<Colour> {
    enum Value { Red, Green };

    using EnumerationValue::EnumerationValue;
    constexpr Colour() noexcept = default;
    constexpr Colour(Value value) noexcept : EnumerationValue(value) {}
    constexpr operator Value() const noexcept { return getValue(); }

    static std::string getTypeName() { return "library.Colour"; }
    static std::map<std::string, Value> const & getLiterals() {
        static std::map<std::string, Value> const literals{{"red", Red}, {"green", Green}};
        return literals;
    }
};

} // namespace library

namespace ZEL::tests {
namespace {

using library::Colour;

/// The name of the kind, and its literals in the order of their numbers.
template <class Kind> std::string described() {
    std::string text = Kind::getTypeName() + ':';
    for (std::size_t i = 0; i < Kind::getLiterals().size(); ++i) {
        text += ' ' + Kind(static_cast<typename Kind::Value>(i)).toString().str();
    }
    return text;
}

TEST(Kind, HasItsLiteralsAndItsName) {
    EXPECT_EQ("ZEL.VisibilityKind: public private protected package", described<VisibilityKind>());
    EXPECT_EQ("ZEL.ParameterDirectionKind: in inout out return", described<ParameterDirectionKind>());
    EXPECT_EQ("ZEL.PackageMergeKind: exdend define", described<PackageMergeKind>());
    EXPECT_EQ("ZEL.PersistenceKind: default transient extension", described<PersistenceKind>());
    EXPECT_EQ(0, VisibilityKind::Public);
    EXPECT_EQ(3, ParameterDirectionKind::Return);
}

TEST(Kind, StartsAsItsFirstLiteralAndComparesByNumber) {
    EXPECT_TRUE(VisibilityKind() == VisibilityKind::Public);
    VisibilityKind const kind = VisibilityKind::Protected;
    EXPECT_TRUE(kind == VisibilityKind(VisibilityKind::Protected) && VisibilityKind::Protected == kind);
    EXPECT_TRUE(kind != VisibilityKind::Package && kind < VisibilityKind::Package && VisibilityKind::Private < kind);
    EXPECT_TRUE(kind >= VisibilityKind(VisibilityKind::Private) && kind <= VisibilityKind::Protected);
    switch (kind) {
    case VisibilityKind::Protected:
        break;
    default:
        ADD_FAILURE() << "a kind selects like its enumerator";
    }
}

TEST(Kind, ReadsAndPrintsExactlyItsLiterals) {
    HASP::ErrorHolder errors;
    auto const read = VisibilityKind::getTypeInfo().convertFromString("private", errors);
    EXPECT_TRUE(HASP::any_cast<VisibilityKind>(read) == VisibilityKind::Private);
    EXPECT_TRUE(VisibilityKind::getTypeInfo().convertFromString("Private", errors).empty());
    EXPECT_TRUE(errors.hasError());
    EXPECT_THROW((void)VisibilityKind(static_cast<VisibilityKind::Value>(9)).toString(), std::exception);
}

TEST(Kind, OfAnApplicationIsBoxedLikeABuiltInOne) {
    EXPECT_FALSE(ValueObject(Colour(Colour::Green)).isValid()) << "its type has no name yet";
    TypeInfoRegistry::registerTypeInfo(Colour::getTypeName(), Colour::getTypeInfo());
    Object const boxed = Colour(Colour::Green);
    TypeInfoRegistry::unregisterTypeInfo(Colour::getTypeName());

    EXPECT_EQ("green", boxed.toString());
    EXPECT_TRUE(Colour(boxed) == Colour::Green);
    EXPECT_THROW(VisibilityKind{boxed}, HASP::bad_any_cast);
    EXPECT_TRUE(VisibilityKind(ValueObject(VisibilityKind(VisibilityKind::Package))) == VisibilityKind::Package);
}

} // namespace
} // namespace ZEL::tests
