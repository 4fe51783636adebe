#include "write/Fields.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

/// Operations that both state and body override, and that are therefore pure in the interface.
struct Pure {
    bool presence; ///< `has` and `remove`
    bool setter;
    bool getter;
};

/// For the operations of `p`, which do what those of `by` do. An operation of another name is not pure: it forwards.
Pure pureOf(Property const & p, Property const & by) {
    bool const isStored = by.isField() && p.base == by.base;
    return {isStored && by.form == Form::Value, isStored, isStored && p.getter() == by.getter()};
}

/// A single value of a data type. A required property always has a value; for others the field or a has-flag says
/// whether there is one. A required Boolean `isFoo` is a flag: its getter has the name of the property.
class ValueForm : public PropertyForm {
public:
    std::string definitions(Printer const & print, Property const & p) const override {
        if (p.making == Making::Unimplemented) {
            return unimplemented(print, p);
        }
        std::string const presence = !p.isField() || p.form == Form::Value ? "" : print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant) const { return ZEL::Boolean(true); }

void $X$Intf::remove$P$(ZEL::Deviant) {}
)");
        return Printer::blocks({presence, p.isTextField() ? noView(print) : ""});
    }

    std::string forwardDefinitions(Printer const & print, Property const & p, Property const & by) const override {
        Pure const pure = pureOf(p, by);
        Printer const forward = forwarding(print, p, by);
        std::string const presence = forward(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant deviant) const { return $I$has$Q$(deviant); }

void $X$Intf::remove$P$(ZEL::Deviant deviant) { $I$remove$Q$(deviant); }
)");
        std::string const setter = forward(R"(
void $X$Intf::set$P$(ZEL::Deviant deviant, $T$ const & value) { $I$set$Q$(deviant, value); }
)");
        std::string const getter =
            print(R"(
$T$ $X$Intf::$get$(ZEL::Deviant deviant) const { return $I$$getBy$(deviant); }
)",
                  {{"getBy", by.getter()}, {"I", p.getter() == by.getter() ? qualifierOf(p, by) : ""}});
        return Printer::blocks({pure.presence ? "" : presence, pure.setter ? "" : setter, pure.getter ? "" : getter,
                                !p.isTextField() ? ""
                                : pure.getter    ? noView(print)
                                                 : forwardedView(print, p, by)});
    }

    std::string overrides(Printer const & print, Property const & p, Holder) const override {
        std::string const access = print(R"(
void set$P$(ZEL::Deviant deviant, $T$ const & value) override;
[[nodiscard]] $T$ $get$(ZEL::Deviant deviant) const override;
$view$
)",
                                         {{"view", p.isTextField() ? viewDeclaration(print, "", " override") : ""}});
        return p.form != Form::Value ? access
                                     : print(R"(
[[nodiscard]] ZEL::Boolean has$P$(ZEL::Deviant deviant) const override;
void remove$P$(ZEL::Deviant deviant) override;
$access$
)",
                                             {{"access", access}});
    }

    std::string overrideDefinitions(Printer const & print, Property const & p, Holder in) const override {
        bool const isBody = in == Holder::Body;
        std::string const reading = isBody ? "read(deviant)." : "fields.";
        Printer const over = print.knowing(
            {{"deviant", isBody ? " deviant" : ""}, {"writing", isBody ? "auto & fields = write(deviant);" : ""}});
        std::string const comparing = !isBody ? ""
                                              : print(R"(
auto const & present = read(deviant);
if ($holds$) {
    return;
}
)",
                                                      {{"holds", fieldText::holds("present.", p, "value")}});
        std::string const access = over(R"(
void $C$::set$P$(ZEL::Deviant$deviant$, $T$ const & value) {
    $comparing$
    $writing$
    $store$
}

$T$ $C$::$get$(ZEL::Deviant$deviant$) const { return $load$; }
$view$
)",
                                        {{"comparing", comparing},
                                         {"view", !p.isTextField() ? ""
                                                                   : over(R"(

std::string_view $C$::$get$View(ZEL::Deviant$deviant$) const { return $text$.view(); }
)",
                                                                          {{"text", fieldText::member(reading, p)}})},
                                         {"store", fieldText::store("fields.", p, "value")},
                                         {"load", fieldText::load(reading, p)}});
        if (p.form != Form::Value) {
            return access;
        }
        return over(R"(
ZEL::Boolean $C$::has$P$(ZEL::Deviant$deviant$) const { return ZEL::Boolean($isSet$); }

void $C$::remove$P$(ZEL::Deviant$deviant$) {
    $writing$
    $clear$
}

$access$
)",
                    {{"isSet", boolOf(fieldText::isSet(reading, p), p)},
                     {"clear", fieldText::clear("fields.", p)},
                     {"access", access}});
    }

    std::string readers(Printer const & print, Property const & p) const override {
        return print(R"(
[[nodiscard]] ZEL::Boolean has$P$() const { return getImplementation()->has$P$(getDeviant()); }
[[nodiscard]] $T$ $get$() const { return getImplementation()->$get$(getDeviant()); }
)") + (!p.isTextField() ? "" : print(R"(
/// Valid until the next write to the model, or its end.
[[nodiscard]] std::string_view $get$View() const { return getImplementation()->$get$View(getDeviant()); }
)"));
    }

    std::string writers(Printer const & print, Property const &) const override {
        return print(R"(
void remove$P$() const { getImplementation()->remove$P$(getDeviant()); }
void set$P$($T$ const & value) const { getImplementation()->set$P$(getDeviant(), value); }
)");
    }

    std::string tag(Printer const & print) const override {
        return print(R"(
struct $P$T {
    static ZEL::internal::PropertyDescriptor const & descriptor() noexcept;
    template <class H> static auto get(H const & object) { return object.$get$(); }
    template <class H> static bool has(H const & object) { return bool(object.has$P$()); }
    template <class H> static void setOrAdd(H const & object, $T$ const & value) { object.set$P$(value); }
    template <class H> static void remove(H const & object) { object.remove$P$(); }
};
)");
    }

protected:
    std::string operations(Printer const & print, Property const & p, Property const & by) const override {
        Pure const pure = pureOf(p, by);
        return print(R"(
[[nodiscard]] $before$ZEL::Boolean has$P$(ZEL::Deviant deviant) const$presence$;
$before$void remove$P$(ZEL::Deviant deviant)$presence$;
$before$void set$P$(ZEL::Deviant deviant, $T$ const & value)$setter$;
[[nodiscard]] $before$$T$ $get$(ZEL::Deviant deviant) const$getter$;
$view$
)",
                     {{"before", before(p, by)},
                      {"view", p.isTextField() ? viewDeclaration(print, before(p, by), after(p, by)) : ""},
                      {"presence", after(p, by, pure.presence)},
                      {"setter", after(p, by, pure.setter)},
                      {"getter", after(p, by, pure.getter)}});
    }

private:
    /// The expression as a plain `bool` if it is a bit-field.
    static std::string boolOf(std::string const & expression, Property const & p) {
        return p.keepsHas || p.field == FieldKind::Flag ? "bool(" + expression + ')' : expression;
    }

    static std::string viewDeclaration(Printer const & print, std::string const & before, std::string const & after) {
        return print("[[nodiscard]] $before$std::string_view $get$View(ZEL::Deviant deviant) const$after$;\n",
                     {{"before", before}, {"after", after}});
    }

    /// Not pure: a body written by hand need not keep its text where a view of it can be had.
    static std::string noView(Printer const & print) {
        return print(R"(
std::string_view $X$Intf::$get$View(ZEL::Deviant) const { ZEL::raiseAnInternalError(); }
)");
    }

    /// A derived text is made by each read, so there is nothing to have a view of.
    static std::string forwardedView(Printer const & print, Property const & p, Property const & by) {
        if (!by.isTextField()) {
            return print(R"(
std::string_view $X$Intf::$get$View(ZEL::Deviant) const {
    ZEL::raiseUnimplemented("The $X$.$p$ property is derived and has no view of its text!");
}
)");
        }
        return print(R"(
std::string_view $X$Intf::$get$View(ZEL::Deviant deviant) const { return $I$$viewBy$(deviant); }
)",
                     {{"viewBy", by.viewGetter()}, {"I", p.getter() == by.getter() ? qualifierOf(p, by) : ""}});
    }

    static std::string unimplemented(Printer const & print, Property const & p) {
        std::string const raise = "ZEL::raiseUnimplemented(" + unimplementedText(p) + ");";
        bool const hasValue = p.form == Form::Flag || !p.fixed.empty();
        return print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant) const { $has$ }

void $X$Intf::remove$P$(ZEL::Deviant) { $raise$ }

void $X$Intf::set$P$(ZEL::Deviant, $T$ const &) { $raise$ }

$T$ $X$Intf::$get$(ZEL::Deviant) const { $value$ }
)",
                     {{"raise", raise},
                      {"has", hasValue ? "return ZEL::Boolean(true);" : raise},
                      {"value", p.fixed.empty() ? raise : "return " + fieldText::constant(p, p.fixed) + ';'}});
    }
};

} // namespace

PropertyForm const & valueForm() {
    static ValueForm const form;
    return form;
}

} // namespace zelgen
