#include "write/Fields.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

/// A single value of class type: one end of an association, or a plain reference. The `Only` operations touch this end
/// alone; they stay off the handles.
class ReferenceForm : public PropertyForm {
public:
    std::string definitions(Printer const & print, Property const & p) const override {
        switch (p.making) {
        case Making::Field:
            return bothEnds(print, p) + '\n' + storedEnd(print, p);
        case Making::Container:
            return bothEnds(print, p) + '\n' + containerEnd(print, p);
        case Making::Unimplemented:
            return unimplemented(print, p);
        default:
            return "";
        }
    }

    std::string forwardDefinitions(Printer const & print, Class const & of, Property const & p,
                                   Property const & by) const override {
        std::string const value =
            p.type == by.type ? "value" : "ZEL::internal::narrowed<" + by.type->cppName() + ">(value)";
        std::string const reading = isPure(p, by) ? ""
                                                  : print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant deviant) const { return $I$has$Q$(deviant); }

$T$ $X$Intf::get$P$(ZEL::Deviant deviant) const { return $I$get$Q$(deviant); }

)",
                                                          {{"X", of.name},
                                                           {"P", p.capital},
                                                           {"Q", by.capital},
                                                           {"T", p.type->cppName()},
                                                           {"I", qualifierOf(p, by)}});
        return reading + print(R"(
void $X$Intf::remove$P$(ZEL::Deviant deviant) { $I$remove$Q$(deviant); }

void $X$Intf::set$P$(ZEL::Deviant deviant, $T$ const & value) {
    $I$set$Q$(deviant, $value$);
}

void $X$Intf::removeOnly$P$(ZEL::Deviant deviant) { $I$removeOnly$Q$(deviant); }

void $X$Intf::setOnly$P$(ZEL::Deviant deviant, $T$ const & value) {
    $I$setOnly$Q$(deviant, $value$);
}
)",
                               {{"X", of.name},
                                {"P", p.capital},
                                {"Q", by.capital},
                                {"T", p.type->cppName()},
                                {"value", value},
                                {"I", qualifierOf(p, by)}});
    }

    std::string overrides(Printer const & print, Property const & p, Holder in) const override {
        std::string const writing = in == Holder::Body ? ""
                                                       : print(R"(
void remove$P$(ZEL::Deviant deviant) override;
void set$P$(ZEL::Deviant deviant, $T$ const & value) override;
)",
                                                               {{"P", p.capital}, {"T", p.type->cppName()}});
        return print(R"(
[[nodiscard]] ZEL::Boolean has$P$(ZEL::Deviant deviant) const override;
$writing$
[[nodiscard]] $T$ get$P$(ZEL::Deviant deviant) const override;
)",
                     {{"P", p.capital}, {"T", p.type->cppName()}, {"writing", writing}});
    }

    std::string overrideDefinitions(Printer const & print, Class const & of, Property const & p,
                                    Holder in) const override {
        bool const isBody = in == Holder::Body;
        std::string const writing = isBody ? ""
                                           : print(R"(

void $X$::remove$P$(ZEL::Deviant) { $f$ = nullptr; }

void $X$::set$P$(ZEL::Deviant, $T$ const & value) { $f$ = value.getImplementationWithoutAssert(); }
)",
                                                   {{"X", holderName(of, in)},
                                                    {"P", p.capital},
                                                    {"T", p.type->cppName()},
                                                    {"f", fieldText::member("fields.", p)}});
        return print(R"(
ZEL::Boolean $X$::has$P$(ZEL::Deviant$deviant$) const { return ZEL::Boolean($f$ != nullptr); }

$T$ $X$::get$P$(ZEL::Deviant deviant) const { return $T$($f$, deviant); }
)",
                     {{"X", holderName(of, in)},
                      {"P", p.capital},
                      {"T", p.type->cppName()},
                      {"deviant", isBody ? " deviant" : ""},
                      {"f", fieldText::member(isBody ? "read(deviant)." : "fields.", p)}}) +
               writing;
    }

    std::string readers(Printer const & print, Property const & p) const override {
        return print(R"(
[[nodiscard]] ZEL::Boolean has$P$() const { return getImplementation()->has$P$(getDeviant()); }
[[nodiscard]] $T$ get$P$() const;
)",
                     {{"P", p.capital}, {"T", p.type->cppName(true)}});
    }
    std::string readerDefinitions(Printer const & print, Class const & of, Property const & p) const override {
        return getter(print, p, "Immutable" + of.name, p.type->cppName(true));
    }

    std::string writers(Printer const & print, Property const & p) const override {
        return print(R"(
void remove$P$() const { getImplementation()->remove$P$(getDeviant()); }
void set$P$($T$ const & value) const { getImplementation()->set$P$(getDeviant(), value); }
[[nodiscard]] $T$ get$P$() const;
)",
                     {{"P", p.capital}, {"T", p.type->cppName()}});
    }
    std::string writerDefinitions(Printer const & print, Class const & of, Property const & p) const override {
        return getter(print, p, of.name, p.type->cppName());
    }

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

protected:
    std::string operations(Printer const & print, Property const & p, Property const & by) const override {
        return print(R"(
[[nodiscard]] $before$ZEL::Boolean has$P$(ZEL::Deviant deviant) const$reading$;
$before$void remove$P$(ZEL::Deviant deviant)$after$;
$before$void set$P$(ZEL::Deviant deviant, $T$ const & value)$after$;
[[nodiscard]] $before$$T$ get$P$(ZEL::Deviant deviant) const$reading$;
$before$void removeOnly$P$(ZEL::Deviant deviant)$after$;
$before$void setOnly$P$(ZEL::Deviant deviant, $T$ const & value)$after$;
)",
                     {{"before", before(p, by)},
                      {"after", after(p, by)},
                      {"reading", after(p, by, isPure(p, by))},
                      {"P", p.capital},
                      {"T", p.type->cppName()}});
    }

private:
    /// State and body both override `has` and `get`, of `p` as of `by`, whose operations are called the same.
    static bool isPure(Property const & p, Property const & by) { return by.isField() && p.base == by.base; }

    static std::string bothEnds(Printer const & print, Property const & p) {
        return print(R"(
void $X$Intf::remove$P$(ZEL::Deviant deviant) { ZEL::internal::removeEnd(*this, deviant, $p$()); }

void $X$Intf::set$P$(ZEL::Deviant deviant, $T$ const & value) {
    ZEL::internal::setEnd(*this, deviant, $p$(), value);
}
)",
                     {{"X", p.owner->name}, {"P", p.capital}, {"T", p.type->cppName()}, {"p", descriptorOperation(p)}});
    }

    static std::string storedEnd(Printer const & print, Property const & p) {
        return print(R"(
void $X$Intf::removeOnly$P$(ZEL::Deviant deviant) {
    ZEL::internal::writeStateOf<$X$Intf>(*this, deviant).remove$P$(deviant);
}

void $X$Intf::setOnly$P$(ZEL::Deviant deviant, $T$ const & value) {
    ZEL::internal::noteForeignElement(*this, value);
    ZEL::internal::writeStateOf<$X$Intf>(*this, deviant).set$P$(deviant, value);
}
)",
                     {{"X", p.owner->name}, {"P", p.capital}, {"T", p.type->cppName()}});
    }

    static std::string containerEnd(Printer const & print, Property const & p) {
        return print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant deviant) const { return ZEL::Boolean(get$P$(deviant).isValid()); }

$T$ $X$Intf::get$P$(ZEL::Deviant deviant) const { return $T$(getContainerZEL(deviant)); }

void $X$Intf::removeOnly$P$(ZEL::Deviant deviant) { removeOnlyContainerZEL(deviant); }

void $X$Intf::setOnly$P$(ZEL::Deviant deviant, $T$ const & value) { setOnlyContainerZEL(deviant, value); }
)",
                     {{"X", p.owner->name}, {"P", p.capital}, {"T", p.type->cppName()}});
    }

    static std::string unimplemented(Printer const & print, Property const & p) {
        return print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant) const { $raise$ }

void $X$Intf::remove$P$(ZEL::Deviant) { $raise$ }

void $X$Intf::set$P$(ZEL::Deviant, $T$ const &) { $raise$ }

$T$ $X$Intf::get$P$(ZEL::Deviant) const { $raise$ }

void $X$Intf::removeOnly$P$(ZEL::Deviant) { $raise$ }

void $X$Intf::setOnly$P$(ZEL::Deviant, $T$ const &) { $raise$ }
)",
                     {{"X", p.owner->name},
                      {"P", p.capital},
                      {"T", p.type->cppName()},
                      {"raise", "ZEL::raiseUnimplemented(" + unimplementedText(p) + ");"}});
    }

    static std::string getter(Printer const & print, Property const & p, std::string const & handle,
                              std::string const & type) {
        return print(R"(
$T$ $H$::get$P$() const { return getImplementation()->get$P$(getDeviant()); }
)",
                     {{"H", handle}, {"P", p.capital}, {"T", type}});
    }
};

} // namespace

PropertyForm const & referenceForm() {
    static ReferenceForm const form;
    return form;
}

} // namespace zelgen
