#include "family/Names.h"
#include "write/Fields.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

/// A required Boolean `isFoo`: it always has a value, and its reader is called as the property.
class FlagForm : public PropertyForm {
public:
    std::string declarations(Printer const & print, Property const & p) const override {
        return print(R"(
[[nodiscard]] virtual ZEL::Boolean has$P$(ZEL::Deviant deviant) const;
virtual void remove$P$(ZEL::Deviant deviant);
virtual void set$P$(ZEL::Deviant deviant, ZEL::Boolean const & value);
[[nodiscard]] virtual ZEL::Boolean $p$(ZEL::Deviant deviant) const;
)",
                     {{"P", p.capital}, {"p", p.base}});
    }

    std::string definitions(Printer const & print, Property const & p) const override {
        if (p.making == Making::Unimplemented) {
            return unimplemented(print, p);
        }
        if (!p.isField()) {
            return "";
        }
        return print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant) const { return ZEL::Boolean(true); }

void $X$Intf::remove$P$(ZEL::Deviant) {}

void $X$Intf::set$P$(ZEL::Deviant deviant, ZEL::Boolean const & value) {
    if ($p$(deviant) == value) {
        return;
    }
    ZEL::internal::writeStateOf<$X$Intf>(*this, deviant).set$P$(deviant, value);
}

ZEL::Boolean $X$Intf::$p$(ZEL::Deviant deviant) const {
    return ZEL::internal::readStateOf<$X$Intf>(*this, deviant).$p$(deviant);
}
)",
                     {{"X", p.owner->name}, {"P", p.capital}, {"p", p.base}});
    }

    std::string forwardDeclarations(Printer const & print, Property const & p) const override {
        return print(R"(
[[nodiscard]] ZEL::Boolean has$P$(ZEL::Deviant deviant) const override;
void remove$P$(ZEL::Deviant deviant) override;
void set$P$(ZEL::Deviant deviant, ZEL::Boolean const & value) override;
[[nodiscard]] ZEL::Boolean $p$(ZEL::Deviant deviant) const override;
)",
                     {{"P", p.capital}, {"p", p.base}});
    }

    std::string forwardDefinitions(Printer const & print, Class const & of, Property const & p,
                                   Property const & by) const override {
        return print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant deviant) const { return $I$has$Q$(deviant); }

void $X$Intf::remove$P$(ZEL::Deviant deviant) { $I$remove$Q$(deviant); }

void $X$Intf::set$P$(ZEL::Deviant deviant, ZEL::Boolean const & value) { $I$set$Q$(deviant, value); }

ZEL::Boolean $X$Intf::$p$(ZEL::Deviant deviant) const { return $I$$q$(deviant); }
)",
                     {{"X", of.name},
                      {"P", p.capital},
                      {"p", p.base},
                      {"Q", by.capital},
                      {"q", by.getter()},
                      {"I", qualifierOf(p, by)}});
    }

    std::string stateDeclarations(Printer const & print, Property const & p) const override {
        return print(R"(
void set$P$(ZEL::Deviant deviant, ZEL::Boolean const & value) override;
[[nodiscard]] ZEL::Boolean $p$(ZEL::Deviant deviant) const override;
)",
                     {{"P", p.capital}, {"p", p.base}});
    }

    std::string stateDefinitions(Printer const & print, Class const & of, Property const & p) const override {
        return print(R"(
void $X$DeviantImpl::set$P$(ZEL::Deviant, ZEL::Boolean const & value) { fields.$f$ = bool(value); }

ZEL::Boolean $X$DeviantImpl::$p$(ZEL::Deviant) const { return ZEL::Boolean(bool(fields.$f$)); }
)",
                     {{"X", of.name}, {"P", p.capital}, {"p", p.base}, {"f", Names::field(p.base)}});
    }

    std::string bodyDeclarations(Printer const & print, Property const & p) const override {
        return stateDeclarations(print, p);
    }

    std::string bodyDefinitions(Printer const & print, Class const & of, Property const & p) const override {
        return print(R"(
void $X$Impl::set$P$(ZEL::Deviant deviant, ZEL::Boolean const & value) {
    if (read(deviant).$f$ != bool(value)) {
        write(deviant).$f$ = bool(value);
    }
}

ZEL::Boolean $X$Impl::$p$(ZEL::Deviant deviant) const { return ZEL::Boolean(bool(read(deviant).$f$)); }
)",
                     {{"X", of.name}, {"P", p.capital}, {"p", p.base}, {"f", Names::field(p.base)}});
    }

    std::string readers(Printer const & print, Property const & p) const override {
        return print(R"(
[[nodiscard]] ZEL::Boolean has$P$() const { return getImplementation()->has$P$(getDeviant()); }
[[nodiscard]] ZEL::Boolean $p$() const { return getImplementation()->$p$(getDeviant()); }
)",
                     {{"P", p.capital}, {"p", p.base}});
    }
    std::string readerDefinitions(Printer const &, Class const &, Property const &) const override { return ""; }

    std::string writers(Printer const & print, Property const & p) const override {
        return print(R"(
void remove$P$() const { getImplementation()->remove$P$(getDeviant()); }
void set$P$(ZEL::Boolean const & value) const { getImplementation()->set$P$(getDeviant(), value); }
)",
                     {{"P", p.capital}});
    }
    std::string writerDefinitions(Printer const &, Class const &, Property const &) const override { return ""; }

    std::string tag(Printer const & print, Property const & p) const override {
        return print(R"(
struct $P$T {
    static ZEL::internal::PropertyDescriptor const & descriptor() noexcept;
    template <class H> static auto get(H const & object) { return object.$p$(); }
    template <class H> static bool has(H const & object) { return bool(object.has$P$()); }
    template <class H> static void setOrAdd(H const & object, ZEL::Boolean const & value) { object.set$P$(value); }
    template <class H> static void remove(H const & object) { object.remove$P$(); }
};
)",
                     {{"P", p.capital}, {"p", p.base}});
    }

private:
    static std::string unimplemented(Printer const & print, Property const & p) {
        std::string const raise = "ZEL::raiseUnimplemented(" + unimplementedText(p) + ");";
        return print(R"(
ZEL::Boolean $X$Intf::has$P$(ZEL::Deviant) const { return ZEL::Boolean(true); }

void $X$Intf::remove$P$(ZEL::Deviant) { $raise$ }

void $X$Intf::set$P$(ZEL::Deviant, ZEL::Boolean const &) { $raise$ }

ZEL::Boolean $X$Intf::$p$(ZEL::Deviant) const { $get$ }
)",
                     {{"X", p.owner->name},
                      {"P", p.capital},
                      {"p", p.base},
                      {"raise", raise},
                      {"get", p.fixed.empty() ? raise : "return " + fieldText::constant(p, p.fixed) + ';'}});
    }
};

} // namespace

PropertyForm const & flagForm() {
    static FlagForm const form;
    return form;
}

} // namespace zelgen
