#include "write/Fields.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

/// The sequence under a view. If the view has no other end to update, the sequence under it updates its own.
std::string getterBelow(Property const & view, Property const & part) {
    return "get" + part.plural + (view.isRawOnly() ? "" : "WithoutAssociation") + "(deviant)";
}

/// Any number of values: a sequence that updates the other ends, and the raw one.
class ManyForm : public PropertyForm {
public:
    std::string definitions(Printer const & print, Property const & p) const override {
        std::string const byName = p.making == Making::Hand ? "" : byNameDefinitions(print, p);
        switch (p.making) {
        case Making::Field:
            return Printer::blocks({stored(print, p), byName});
        case Making::Filter:
            return Printer::blocks({withAssociation(print, p),
                                    raw(print, "ZEL::internal::filteredView<" + p.type->cppName() + ">(deviant, " +
                                                   getterBelow(p, *p.filtered) + ")"),
                                    byName});
        case Making::Containees:
            return Printer::blocks(
                {withAssociation(print, p),
                 raw(print, "ZEL::internal::combinedContainees<" + p.type->cppName() + ">(*this, deviant)"), byName});
        case Making::Union: // the raw form is among the views of the class
            return Printer::blocks({withAssociation(print, p), byName});
        case Making::Extension:
            return Printer::blocks({extension(print, ""), extension(print, "WithoutAssociation"), byName});
        case Making::Unimplemented:
            return Printer::blocks({unimplemented(print, p), byName});
        default:
            return "";
        }
    }

    std::string forwardDefinitions(Printer const & print, Property const & p, Property const & by) const override {
        Printer const forward = forwarding(print, p, by);
        std::string const byName = !hasByName(p) ? "" : forward(R"(

$T$ $X$Intf::get$P$ByName(ZEL::Deviant deviant, ZEL::String const & name) { return $I$get$Q$ByName(deviant, name); }

$IT$ $X$Intf::get$P$ByName(ZEL::Deviant deviant, ZEL::String const & name) const {
    return $I$get$Q$ByName(deviant, name);
}
)");
        return forward(R"(
ZEL::Sequence<$T$> $X$Intf::get$Ps$(ZEL::Deviant deviant) const { return $I$get$Qs$(deviant); }

ZEL::Sequence<$T$> $X$Intf::get$Ps$WithoutAssociation(ZEL::Deviant deviant) const {
    return $I$get$Qs$WithoutAssociation(deviant);
}
)") + byName;
    }

    std::string overrides(Printer const & print, Property const & p, Holder in) const override {
        return in == Holder::Body
                   ? ""
                   : print("[[nodiscard]] $S$ & internal_$p$Field(ZEL::internal::FieldUse use) override;\n",
                           {{"S", storage(p)}});
    }

    std::string overrideDefinitions(Printer const & print, Property const & p, Holder in) const override {
        if (in == Holder::Body) {
            return "";
        }
        return print(R"(
$S$ & $C$::internal_$p$Field(ZEL::internal::FieldUse$use$) {
    $access$
}
)",
                     {{"S", storage(p)}, {"use", p.isSeldom ? " use" : ""}, {"access", access(print, p)}});
    }

    std::string readers(Printer const & print, Property const & p) const override { return getters(print, p, true); }
    std::string writers(Printer const & print, Property const & p) const override { return getters(print, p, false); }

    std::string tag(Printer const & print) const override {
        return print(R"(
struct $P$T {
    static ZEL::internal::PropertyDescriptor const & descriptor() noexcept;
    template <class H> static auto get(H const & object) { return object.get$Ps$(); }
    template <class H> static bool has(H const & object) { return !object.get$Ps$().empty(); }
    template <class H> static void setOrAdd(H const & object, $T$ const & value) { object.get$Ps$().push_back(value); }
};
)");
    }

protected:
    std::string operations(Printer const & print, Property const & p, Property const & by) const override {
        Printer const declare = print.knowing({{"before", before(p, by)}, {"after", after(p, by)}});
        std::string const byName = !hasByName(p) ? "" : declare(R"(
[[nodiscard]] $before$$T$ get$P$ByName(ZEL::Deviant deviant, ZEL::String const & name)$after$;
[[nodiscard]] $before$$IT$ get$P$ByName(ZEL::Deviant deviant, ZEL::String const & name) const$after$;
)");
        std::string const field = !p.isField() || &p != &by ? ""
                                                            : print(R"(
/// The field; of states alone.
[[nodiscard]] virtual $S$ & internal_$p$Field(ZEL::internal::FieldUse use);
[[nodiscard]] static ZEL::Generic::SequenceField const & $p$Field() noexcept;
)",
                                                                    {{"S", storage(p)}});
        return declare(R"(
[[nodiscard]] $before$ZEL::Sequence<$T$> get$Ps$(ZEL::Deviant deviant) const$after$;
[[nodiscard]] $before$ZEL::Sequence<$T$> get$Ps$WithoutAssociation(ZEL::Deviant deviant) const$after$;
$byName$
$field$
)",
                       {{"byName", byName}, {"field", field}});
    }

private:
    static bool isText(Property const & p) { return p.field == FieldKind::Texts; }
    static std::string storage(Property const & p) {
        return isText(p) ? "ZEL::internal::PersistentTextSequence" : "ZEL::internal::PersistentSequence";
    }
    static std::string access(Printer const & print, Property const & p) {
        std::string const read = fieldText::member("fields.", p);
        return !p.isSeldom
                   ? "return " + read + ';'
                   : print(R"(
return use == ZEL::internal::FieldUse::Write ? $write$
                                             : const_cast<$S$ &>($read$);
)",
                           {{"S", storage(p)}, {"write", fieldText::writableMember("fields.", p)}, {"read", read}});
    }
    static bool hasByName(Property const & p) { return p.type->asClass != nullptr && p.type->asClass->isNamedElement; }

    static std::string byNameDefinitions(Printer const & print, Property const & p) {
        if (!hasByName(p)) {
            return "";
        }
        return print(R"(
$T$ $X$Intf::get$P$ByName(ZEL::Deviant deviant, ZEL::String const & name) {
    return ZEL::internal::firstNamed<$T$>(get$Ps$WithoutAssociation(deviant), name);
}

$IT$ $X$Intf::get$P$ByName(ZEL::Deviant deviant, ZEL::String const & name) const {
    return ZEL::internal::firstNamed<$IT$>(get$Ps$WithoutAssociation(deviant), name);
}
)");
    }

    static std::string withAssociation(Printer const & print, Property const & p) {
        std::string const raw = "get" + p.plural + "WithoutAssociation(deviant)";
        return print(
            R"(
ZEL::Sequence<$T$> $X$Intf::get$Ps$(ZEL::Deviant deviant) const {
    return $view$;
}
)",
            {{"view", p.isRawOnly() ? raw
                                    : "ZEL::internal::associationView<" + p.type->cppName() + ">(*this, deviant, " +
                                          descriptorOperation(p) + "(), " + raw + ')'}});
    }

    static std::string stored(Printer const & print, Property const & p) {
        return print(R"(
$withAssociation$

ZEL::Sequence<$T$> $X$Intf::get$Ps$WithoutAssociation(ZEL::Deviant deviant) const {
    return ZEL::internal::storedSequence<$T$>(*this, deviant, $p$Field());
}

$S$ & $X$Intf::internal_$p$Field(ZEL::internal::FieldUse) { ZEL::raiseAnInternalError(); }

ZEL::Generic::SequenceField const & $X$Intf::$p$Field() noexcept {
    static constexpr auto field = ZEL::Generic::SequenceField::$of$(
        $type$[](ZEL::NSInterface::ClassObjectIntf const * object, ZEL::Deviant deviant) -> $S$ const & {
            return ZEL::internal::readStateOf<$X$Intf>(*object, deviant)
                .internal_$p$Field(ZEL::internal::FieldUse::Read);
        },
        [](ZEL::NSInterface::ClassObjectIntf const * object, ZEL::Deviant deviant) -> $S$ & {
            return ZEL::internal::writeStateOf<$X$Intf>(*object, deviant)
                .internal_$p$Field(ZEL::internal::FieldUse::Write);
        }$unique$);
    return field;
}
)",
                     {{"withAssociation", withAssociation(print, p)},
                      {"S", storage(p)},
                      {"of", isText(p) ? "ofTexts" : "ofBodies"},
                      {"type", isText(p) ? ""
                                         : Printer::quoted(p.type->qualifiedName()) + ", &" +
                                               interfaceOf(*p.type->asClass) + "::classInfo,\n        "},
                      {"unique", !isText(p)   ? ""
                                 : p.isUnique ? ",\n        true"
                                              : ",\n        false"}});
    }

    static std::string extension(Printer const & print, std::string const & suffix) {
        return print(R"(
ZEL::Sequence<$T$> $X$Intf::get$Ps$$suffix$(ZEL::Deviant deviant) const {
    return ZEL::internal::filteredView<$T$>(deviant, getAppliedStereotypeInstances$suffix$(deviant));
}
)",
                     {{"suffix", suffix}});
    }

    static std::string unimplemented(Printer const & print, Property const & p) {
        return print(R"(
ZEL::Sequence<$T$> $X$Intf::get$Ps$(ZEL::Deviant) const { $raise$ }

ZEL::Sequence<$T$> $X$Intf::get$Ps$WithoutAssociation(ZEL::Deviant) const { $raise$ }
)",
                     {{"raise", "ZEL::raiseUnimplemented(" + unimplementedText(p) + ");"}});
    }

    static std::string getters(Printer const & print, Property const & p, bool immutable) {
        Printer const handle = forHandle(print, p, immutable);
        return handle(R"(
template <class R = ZEL::$Immutable$Sequence<$H$>> [[nodiscard]] R get$Ps$() const {
    return implementationFor<R>()->get$Ps$(getDeviant());
}
)") + (!hasByName(p) ? "" : handle(R"(
template <class R = $H$> [[nodiscard]] R get$P$ByName(ZEL::String const & name) const {
    return implementationFor<R>()->get$P$ByName(getDeviant(), name);
}
)"));
    }

public:
    /// The raw sequence of a derived property as the class shows it.
    static std::string raw(Printer const & print, std::string const & view) {
        return print(R"(
ZEL::Sequence<$T$> $X$Intf::get$Ps$WithoutAssociation(ZEL::Deviant deviant) const {
    return $view$;
}
)",
                     {{"view", view}});
    }
};

} // namespace

PropertyForm const & manyForm() {
    static ManyForm const form;
    return form;
}

std::string viewDeclaration(Printer const & print) {
    return print(R"(
[[nodiscard]] ZEL::Sequence<$T$> get$Ps$WithoutAssociation(ZEL::Deviant deviant) const override;
)");
}

std::string viewDefinition(Printer const & print, Class const & of, View const & view) {
    std::vector<std::string> parts;
    bool const partsKeepEnds = view.property->isRawOnly();
    for (Property const * const part : view.parts) {
        std::string const descriptor =
            (part->owner == &of ? "" : operationsOf(*part->owner) + "::") + descriptorOperation(*part) + "()";
        parts.push_back(part->many ? getterBelow(*view.property, *part)
                                   : "ZEL::internal::singleAsSequence<" + part->type->cppName() + ">(*this, deviant, " +
                                         descriptor + (partsKeepEnds ? ", false)" : ", true)"));
    }
    std::string const separator = view.parts.size() > 1 ? ",\n     " : "";
    return ManyForm::raw(print, "ZEL::internal::unionOf<" + view.property->type->cppName() + ">(deviant, {" +
                                    Printer::join(parts, separator) + "})");
}

} // namespace zelgen
