#include "write/Fields.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

/// A single value of a data type. A required one always has a value; of others the field or a has-flag tells.
class ValueForm : public PropertyForm {
public:
    std::string declarations(Printer const & print, Property const & p) const override {
        return print(R"(
[[nodiscard]] virtual ZEL::Boolean has$P$(ZEL::Deviant deviant) const;
virtual void remove$P$(ZEL::Deviant deviant);
virtual void set$P$(ZEL::Deviant deviant, $T$ const & value);
[[nodiscard]] virtual $T$ get$P$(ZEL::Deviant deviant) const;
)",
                     {{"P", p.capital}, {"T", p.type->cppName()}});
    }

    std::string definitions(Printer const & print, Property const & p) const override {
        if (p.making == Making::Unimplemented) {
            return unimplemented(print, p);
        }
        if (!p.isField()) {
            return "";
        }
        return print(
            R"(
$presence$

void $X$Intf::set$P$(ZEL::Deviant deviant, $T$ const & value) {
    if ($unchanged$) {
        return;
    }
    ZEL::internal::writeStateOf<$X$Intf>(*this, deviant).set$P$(deviant, value);
}

$T$ $X$Intf::get$P$(ZEL::Deviant deviant) const {
    return ZEL::internal::readStateOf<$X$Intf>(*this, deviant).get$P$(deviant);
}
)",
            {{"presence", presence(print, p)},
             {"X", p.owner->name},
             {"P", p.capital},
             {"T", p.type->cppName()},
             {"unchanged", (fieldText::mayHoldAbsentValue(p) ? "has" + p.capital + "(deviant) && get" : "get") +
                               p.capital + "(deviant) == value"}});
    }

    std::string forwardDeclarations(Printer const & print, Property const & p) const override {
        return print(R"(
[[nodiscard]] ZEL::Boolean has$P$(ZEL::Deviant deviant) const override;
void remove$P$(ZEL::Deviant deviant) override;
void set$P$(ZEL::Deviant deviant, $T$ const & value) override;
[[nodiscard]] $T$ get$P$(ZEL::Deviant deviant) const override;
)",
                     {{"P", p.capital}, {"T", p.type->cppName()}});
    }

    std::string forwardDefinitions(Printer const & print, Class const & of, Property const & p,
                                   Property const & by) const override {
        return print(
            R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant deviant) const { return $I$has$Q$(deviant); }

void $X$Intf::remove$P$(ZEL::Deviant deviant) { $I$remove$Q$(deviant); }

void $X$Intf::set$P$(ZEL::Deviant deviant, $T$ const & value) { $I$set$Q$(deviant, value); }

$T$ $X$Intf::get$P$(ZEL::Deviant deviant) const { return $I$get$Q$(deviant); }
)",
            {{"X", of.name}, {"P", p.capital}, {"Q", by.capital}, {"T", p.type->cppName()}, {"I", qualifierOf(p, by)}});
    }

    std::string stateDeclarations(Printer const & print, Property const & p) const override {
        if (p.form == Form::RequiredValue) {
            return print(R"(
void set$P$(ZEL::Deviant deviant, $T$ const & value) override;
[[nodiscard]] $T$ get$P$(ZEL::Deviant deviant) const override;
)",
                         {{"P", p.capital}, {"T", p.type->cppName()}});
        }
        return forwardDeclarations(print, p);
    }

    std::string stateDefinitions(Printer const & print, Class const & of, Property const & p) const override {
        std::string access = print(R"(
void $X$DeviantImpl::set$P$(ZEL::Deviant, $T$ const & value) {
    $store$
}

$T$ $X$DeviantImpl::get$P$(ZEL::Deviant) const { return $load$; }
)",
                                   {{"X", of.name},
                                    {"P", p.capital},
                                    {"T", p.type->cppName()},
                                    {"store", fieldText::store("fields.", p, "value")},
                                    {"load", fieldText::load("fields.", p)}});
        if (p.form == Form::RequiredValue) {
            return access;
        }
        return print(R"(
ZEL::Boolean $X$DeviantImpl::has$P$(ZEL::Deviant) const { return ZEL::Boolean($isSet$); }

void $X$DeviantImpl::remove$P$(ZEL::Deviant) {
    $clear$
}

$access$
)",
                     {{"X", of.name},
                      {"P", p.capital},
                      {"isSet", boolOf(fieldText::isSet("fields.", p), p)},
                      {"clear", fieldText::clear("fields.", p)},
                      {"access", access}});
    }

    std::string bodyDeclarations(Printer const & print, Property const & p) const override {
        return stateDeclarations(print, p);
    }

    std::string bodyDefinitions(Printer const & print, Class const & of, Property const & p) const override {
        std::string access = print(R"(
void $X$Impl::set$P$(ZEL::Deviant deviant, $T$ const & value) {
    auto const & present = read(deviant);
    if ($holds$) {
        return;
    }
    auto & fields = write(deviant);
    $store$
}

$T$ $X$Impl::get$P$(ZEL::Deviant deviant) const { return $load$; }
)",
                                   {{"X", of.name},
                                    {"P", p.capital},
                                    {"T", p.type->cppName()},
                                    {"holds", fieldText::holds("present.", p, "value")},
                                    {"store", fieldText::store("fields.", p, "value")},
                                    {"load", fieldText::load("read(deviant).", p)}});
        if (p.form == Form::RequiredValue) {
            return access;
        }
        return print(R"(
ZEL::Boolean $X$Impl::has$P$(ZEL::Deviant deviant) const { return ZEL::Boolean($isSet$); }

void $X$Impl::remove$P$(ZEL::Deviant deviant) {
    auto & fields = write(deviant);
    $clear$
}

$access$
)",
                     {{"X", of.name},
                      {"P", p.capital},
                      {"isSet", boolOf(fieldText::isSet("read(deviant).", p), p)},
                      {"clear", fieldText::clear("fields.", p)},
                      {"access", access}});
    }

    std::string readers(Printer const & print, Property const & p) const override {
        return print(R"(
[[nodiscard]] ZEL::Boolean has$P$() const { return getImplementation()->has$P$(getDeviant()); }
[[nodiscard]] $T$ get$P$() const { return getImplementation()->get$P$(getDeviant()); }
)",
                     {{"P", p.capital}, {"T", p.type->cppName()}});
    }
    std::string readerDefinitions(Printer const &, Class const &, Property const &) const override { return ""; }

    std::string writers(Printer const & print, Property const & p) const override {
        return print(R"(
void remove$P$() const { getImplementation()->remove$P$(getDeviant()); }
void set$P$($T$ const & value) const { getImplementation()->set$P$(getDeviant(), value); }
)",
                     {{"P", p.capital}, {"T", p.type->cppName()}});
    }
    std::string writerDefinitions(Printer const &, Class const &, Property const &) const override { return ""; }

    std::string tag(Printer const & print, Property const & p) const override {
        return print(R"(
struct $P$T {
    static ZEL::internal::PropertyDescriptor const & descriptor() noexcept;
    template <class H> static auto get(H const & object) { return object.get$P$(); }
    template <class H> static bool has(H const & object) { return bool(object.has$P$()); }
    template <class H> static void setOrAdd(H const & object, $T$ const & value) { object.set$P$(value); }
    template <class H> static void remove(H const & object) { object.remove$P$(); }
};
)",
                     {{"P", p.capital}, {"T", p.type->cppName()}});
    }

private:
    /// A one-bit field converts by itself, but not within the braces of `Boolean`'s other constructors.
    static std::string boolOf(std::string const & expression, Property const & p) {
        return p.keepsHas || p.field == FieldKind::Flag ? "bool(" + expression + ')' : expression;
    }

    static std::string presence(Printer const & print, Property const & p) {
        if (p.form == Form::RequiredValue) {
            return print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant) const { return ZEL::Boolean(true); }

void $X$Intf::remove$P$(ZEL::Deviant) {}
)",
                         {{"X", p.owner->name}, {"P", p.capital}});
        }
        return print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant deviant) const {
    return ZEL::internal::readStateOf<$X$Intf>(*this, deviant).has$P$(deviant);
}

void $X$Intf::remove$P$(ZEL::Deviant deviant) {
    ZEL::internal::writeStateOf<$X$Intf>(*this, deviant).remove$P$(deviant);
}
)",
                     {{"X", p.owner->name}, {"P", p.capital}});
    }

    static std::string unimplemented(Printer const & print, Property const & p) {
        std::string const raise = "ZEL::raiseUnimplemented(" + unimplementedText(p) + ");";
        return print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant) const { $has$ }

void $X$Intf::remove$P$(ZEL::Deviant) { $raise$ }

void $X$Intf::set$P$(ZEL::Deviant, $T$ const &) { $raise$ }

$T$ $X$Intf::get$P$(ZEL::Deviant) const { $get$ }
)",
                     {{"X", p.owner->name},
                      {"P", p.capital},
                      {"T", p.type->cppName()},
                      {"raise", raise},
                      {"has", p.fixed.empty() ? raise : "return ZEL::Boolean(true);"},
                      {"get", p.fixed.empty() ? raise : "return " + fieldText::constant(p, p.fixed) + ';'}});
    }
};

} // namespace

PropertyForm const & valueForm() {
    static ValueForm const form;
    return form;
}

} // namespace zelgen
