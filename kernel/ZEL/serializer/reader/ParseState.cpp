#include <ZEL/logging/Logger.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/reader/ParseState.h>

#include <cstdint>

namespace ZEL::Serializer {

QualifiedName RoleNames::of(std::string const * uri, std::string const * localName) {
    auto const hash =
        (reinterpret_cast<std::uintptr_t>(localName) >> 5U) + (reinterpret_cast<std::uintptr_t>(uri) >> 4U);
    Slot & slot = fSlots[(hash ^ (hash >> 8U)) % fSlots.size()];
    if (slot.localName != localName || slot.uri != uri) {
        slot = {uri, localName, QualifiedName(*uri, *localName)};
    }
    return slot.name;
}

void TypeNames::addNamespace(std::string const & prefix, std::string const & uri) {
    if (fNamespaces.lookupNamespace(prefix).empty()) {
        fNamespaces.addNamespace(prefix, uri);
        fVersion = ++fLastVersion;
        fKnown.clear();
    }
}

void TypeNames::pushContext() {
    fNamespaces.pushContext();
    fSavedVersions.push_back(fVersion);
}

void TypeNames::popContext() {
    fNamespaces.popContext();
    if (fVersion != fSavedVersions.back()) {
        fVersion = fSavedVersions.back();
        fKnown.clear();
    }
    fSavedVersions.pop_back();
}

QualifiedName TypeNames::of(std::string_view text) {
    auto const known = fKnown.find(text);
    if (known != fKnown.end()) {
        return known->second;
    }
    std::size_t const colon = text.find(':');
    if (colon == std::string_view::npos) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_InvalidXmiTypeFormat, text);
        return QualifiedName();
    }
    std::string const prefix(text.substr(0, colon));
    std::string const & uri = fNamespaces.lookupNamespace(prefix);
    if (uri.empty()) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_NamespacePrefixNotFound, prefix);
        return QualifiedName();
    }
    return fKnown.emplace(text, QualifiedName(uri, text.substr(colon + 1))).first->second;
}

ParseState::ParseState(std::string const & fileName, HASP::XmlReaderSettings const & settings)
    : xml(fileName, settings),
      xmiUri(xml.intern(XmiConstants::XMI_NS_URI)),
      xmiId(xml.intern("id")),
      xmiType(xml.intern("type")),
      xmiVersion(xml.intern("version")) {}

} // namespace ZEL::Serializer
