#pragma once

#include <ZEL/values/TypeInfoBase.h>

namespace ZEL::internal {

/// The type of handles `H` on objects; an `any` of it holds an `H`.
///
/// An object does not come of a text, so each text is a wrong one. The text of an invalid handle is empty.
template <class H> class ZEL_API HandleType : public TypeInfoBase<HandleType<H>> {
public:
    [[nodiscard]] HASP::any convertFromString(std::string const & text, HASP::ErrorHolder & errors) const override {
        requireNoError(errors);
        reportBadText(errors, text, H::getOrcaName(), "kernel/ZEL/metamodel/HandleType", __LINE__);
        return {};
    }
    [[nodiscard]] std::string convertToString(HASP::any const & value) const override {
        H const & handle = HASP::any_cast<H const &>(value);
        return handle.isValid() ? handle.toString().str() : std::string();
    }
    /// A null handle.
    [[nodiscard]] HASP::any defaultConstruct() const override { return H(); }
    [[nodiscard]] HandleType * clone() const override { return new HandleType(*this); }
};

/// One for each handle class, made at the first call.
template <class H> [[nodiscard]] ZEL_API HASP::TypeInfo const & handleTypeInfo() {
    static HASP::TypeInfo const info = HandleType<H>::Create();
    return info;
}

} // namespace ZEL::internal
