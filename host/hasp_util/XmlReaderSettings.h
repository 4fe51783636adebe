#pragma once

#include <hasp_util/Export.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace HASP {

/// The limits of an `XmlReader`, and what it calls namespaces.
class HOST_API XmlReaderSettings {
public:
    /// How many elements may be open at once.
    [[nodiscard]] std::uint32_t getDepthLimit() const noexcept { return fDepthLimit; }
    void setDepthLimit(std::uint32_t limit) noexcept { fDepthLimit = limit; }

    /// How far entities may expand the input: once their text exceeds `threshold` bytes, text and input together may be
    /// at most `limit` times the input. `limit` is at least 1.
    [[nodiscard]] float getAmplificationLimit() const noexcept { return fAmplificationLimit; }
    [[nodiscard]] std::uint64_t getAmplificationThreshold() const noexcept { return fAmplificationThreshold; }
    void setAmplificationLimit(float limit, std::uint64_t threshold) noexcept {
        fAmplificationLimit = limit;
        fAmplificationThreshold = threshold;
    }

    /// Takes the URI of a namespace as a document declares it, and returns that under which its names are to be reported.
    using NamespaceTranslation = std::function<std::string(std::string const & uri)>;
    /// Empty by default: names are reported as they stand.
    [[nodiscard]] NamespaceTranslation const & getNamespaceTranslation() const noexcept {
        return fNamespaceTranslation;
    }
    void setNamespaceTranslation(NamespaceTranslation translation) { fNamespaceTranslation = std::move(translation); }

private:
    NamespaceTranslation fNamespaceTranslation;
    std::uint32_t fDepthLimit = 1'000'000;
    float fAmplificationLimit = 100.0f;
    std::uint64_t fAmplificationThreshold = 8u * 1024 * 1024;
};

} // namespace HASP
