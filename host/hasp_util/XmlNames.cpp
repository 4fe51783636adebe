#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlNames.h>

#include <cstdint>
#include <cstring>

namespace HASP {

namespace {

constexpr std::size_t cacheSize = 256;

std::size_t cacheIndex(char const * address) noexcept {
    auto const bits = reinterpret_cast<std::uintptr_t>(address);
    return (bits ^ (bits >> 8)) % cacheSize;
}

} // namespace

XmlNames::XmlNames() : fEmpty(&intern({})), fCache(cacheSize) {
    prefix({}).uri = fEmpty;
    prefix(XmlConstants::XML_NS_PREFIX).uri = &intern(XmlConstants::XML_NS_URI);
}

std::string const & XmlNames::intern(std::string_view text) { return *fTexts.emplace(text).first; }

XmlNames::Name const & XmlNames::find(char const * raw) {
    std::string_view const text(raw);
    auto const found = fNames.find(text);
    return found != fNames.end() ? *found->second : enter(text);
}

XmlNames::Name const & XmlNames::findCached(char const * raw) {
    CacheSlot & slot = fCache[cacheIndex(raw)];
    // The text is compared too: nothing promises that the parser does not use an address again.
    if (slot.address != raw || std::strcmp(slot.name->raw.c_str(), raw) != 0) {
        slot = {raw, &find(raw)};
    }
    return *slot.name;
}

XmlNames::Name const & XmlNames::enter(std::string_view raw) {
    std::size_t const colon = raw.find(':');
    std::string_view before = colon == std::string_view::npos ? std::string_view() : raw.substr(0, colon);
    std::string_view behind = colon == std::string_view::npos ? raw : raw.substr(colon + 1);
    Kind kind = Kind::Plain;
    if (colon != std::string_view::npos &&
        (before.empty() || behind.empty() || behind.find(':') != std::string_view::npos)) {
        kind = Kind::Broken;
    } else if (before == XmlConstants::XMLNS_ATTRIBUTE) {
        kind = Kind::Declaration;
        before = behind;
    } else if (raw == XmlConstants::XMLNS_ATTRIBUTE) {
        kind = Kind::Declaration;
    }
    auto name = std::make_unique<Name>(Name{std::string(raw), kind, &prefix(before), &intern(behind)});
    std::string_view const key = name->raw;
    return *fNames.emplace(key, std::move(name)).first->second;
}

XmlNames::Prefix & XmlNames::prefix(std::string_view name) {
    std::string const & text = intern(name);
    std::unique_ptr<Prefix> & slot = fPrefixes[&text];
    if (!slot) {
        slot = std::make_unique<Prefix>(Prefix{&text, nullptr});
    }
    return *slot;
}

void XmlNames::bind(Prefix & prefix, std::string const & uri) {
    fUndo.push_back({&prefix, prefix.uri});
    prefix.uri = &uri;
}

void XmlNames::unbindTo(std::size_t mark) noexcept {
    while (fUndo.size() > mark) {
        fUndo.back().prefix->uri = fUndo.back().uri;
        fUndo.pop_back();
    }
}

} // namespace HASP
