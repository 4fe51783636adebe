#include "write/Fields.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

/// A single value of class type: one end of an association, or a plain reference. The `Only` operations change this end
/// only; handles do not have them.
class ReferenceForm : public PropertyForm {
public:
    std::string definitions(Printer const & print, Property const & p) const override {
        switch (p.making) {
        case Making::Field:
            return bothEnds(print, p) + '\n' + storedEnd(print);
        case Making::Container:
            return bothEnds(print, p) + '\n' + containerEnd(print);
        case Making::Unimplemented:
            return unimplemented(print, p);
        default:
            return "";
        }
    }

    std::string forwardDefinitions(Printer const & print, Property const & p, Property const & by) const override {
        Printer const forward = forwarding(print, p, by);
        std::string const value =
            p.type == by.type ? "value" : "ZEL::internal::narrowed<" + by.type->cppName() + ">(value)";
        std::string const reading = isPure(p, by) ? "" : forward(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant deviant) const { return $I$has$Q$(deviant); }

$T$ $X$Intf::get$P$(ZEL::Deviant deviant) const { return $I$get$Q$(deviant); }

)");
        return reading + forward(R"(
void $X$Intf::remove$P$(ZEL::Deviant deviant) { $I$remove$Q$(deviant); }

void $X$Intf::set$P$(ZEL::Deviant deviant, $T$ const & value) {
    $I$set$Q$(deviant, $value$);
}

void $X$Intf::removeOnly$P$(ZEL::Deviant deviant) { $I$removeOnly$Q$(deviant); }

void $X$Intf::setOnly$P$(ZEL::Deviant deviant, $T$ const & value) {
    $I$setOnly$Q$(deviant, $value$);
}
)",
                                 {{"value", value}});
    }

    std::string overrides(Printer const & print, Property const &, Holder in) const override {
        std::string const writing = in == Holder::Body ? "" : print(R"(
void remove$P$(ZEL::Deviant deviant) override;
void set$P$(ZEL::Deviant deviant, $T$ const & value) override;
)");
        return print(R"(
[[nodiscard]] ZEL::Boolean has$P$(ZEL::Deviant deviant) const override;
$writing$
[[nodiscard]] $T$ get$P$(ZEL::Deviant deviant) const override;
)",
                     {{"writing", writing}});
    }

    std::string overrideDefinitions(Printer const & print, Property const & p, Holder in) const override {
        bool const isBody = in == Holder::Body;
        Printer const over = print.knowing({{"f", fieldText::member(isBody ? "read(deviant)." : "fields.", p)},
                                            {"w", fieldText::writableMember("fields.", p)},
                                            {"clear", fieldText::clear("fields.", p)},
                                            {"deviant", isBody ? " deviant" : ""}});
        return over(R"(
ZEL::Boolean $C$::has$P$(ZEL::Deviant$deviant$) const { return ZEL::Boolean($f$ != nullptr); }

$T$ $C$::get$P$(ZEL::Deviant deviant) const { return $T$($f$, deviant); }
)") + (isBody ? "" : over(R"(

void $C$::remove$P$(ZEL::Deviant) {
    $clear$
}

void $C$::set$P$(ZEL::Deviant, $T$ const & value) { $w$ = value.getImplementationWithoutAssert(); }
)"));
    }

    std::string readers(Printer const & print, Property const &) const override {
        return print(R"(
[[nodiscard]] ZEL::Boolean has$P$() const { return getImplementation()->has$P$(getDeviant()); }
template <class R = $IT$> [[nodiscard]] R get$P$() const { return implementationFor<R>()->get$P$(getDeviant()); }
)");
    }

    std::string writers(Printer const & print, Property const &) const override {
        return print(R"(
void remove$P$() const { getImplementation()->remove$P$(getDeviant()); }
void set$P$($T$ const & value) const { getImplementation()->set$P$(getDeviant(), value); }
template <class R = $T$> [[nodiscard]] R get$P$() const { return implementationFor<R>()->get$P$(getDeviant()); }
)");
    }

    std::string tag(Printer const & print) const override {
        return print(R"(
struct $P$T {
    static ZEL::internal::PropertyDescriptor const & descriptor() noexcept;
    template <class H> static auto get(H const & object) { return object.get$P$(); }
    template <class H> static bool has(H const & object) { return bool(object.has$P$()); }
    template <class H> static void setOrAdd(H const & object, $T$ const & value) { object.set$P$(value); }
    template <class H> static void remove(H const & object) { object.remove$P$(); }
};
)");
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
                     {{"before", before(p, by)}, {"after", after(p, by)}, {"reading", after(p, by, isPure(p, by))}});
    }

private:
    /// Whether both state and body override `has` and `get`, of `by` and so of `p`, whose operations have the same
    /// names.
    static bool isPure(Property const & p, Property const & by) { return by.isField() && p.base == by.base; }

    static std::string bothEnds(Printer const & print, Property const & p) {
        return print(R"(
void $X$Intf::remove$P$(ZEL::Deviant deviant) { ZEL::internal::removeEnd(*this, deviant, $p$()); }

void $X$Intf::set$P$(ZEL::Deviant deviant, $T$ const & value) {
    ZEL::internal::setEnd(*this, deviant, $p$(), value);
}
)",
                     {{"p", descriptorOperation(p)}});
    }

    static std::string storedEnd(Printer const & print) {
        return print(R"(
void $X$Intf::removeOnly$P$(ZEL::Deviant deviant) {
    ZEL::internal::writeStateOf<$X$Intf>(*this, deviant).remove$P$(deviant);
}

void $X$Intf::setOnly$P$(ZEL::Deviant deviant, $T$ const & value) {
    ZEL::internal::noteForeignElement(*this, value);
    ZEL::internal::writeStateOf<$X$Intf>(*this, deviant).set$P$(deviant, value);
}
)");
    }

    static std::string containerEnd(Printer const & print) {
        return print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant deviant) const { return ZEL::Boolean(get$P$(deviant).isValid()); }

$T$ $X$Intf::get$P$(ZEL::Deviant deviant) const { return $T$(getContainerZEL(deviant)); }

void $X$Intf::removeOnly$P$(ZEL::Deviant deviant) { removeOnlyContainerZEL(deviant); }

void $X$Intf::setOnly$P$(ZEL::Deviant deviant, $T$ const & value) { setOnlyContainerZEL(deviant, value); }
)");
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
                     {{"raise", "ZEL::raiseUnimplemented(" + unimplementedText(p) + ");"}});
    }
};

} // namespace

PropertyForm const & referenceForm() {
    static ReferenceForm const form;
    return form;
}

} // namespace zelgen
