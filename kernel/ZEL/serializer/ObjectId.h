#pragma once

#include <ZEL/Export.h>
#include <ZEL/Integer.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ZEL {

class ImmutableClassObject;

/// The prefix of the ids of this system.
inline constexpr char ID_PREFIX[] = "_zel_";

/// An object's id in a file, parsed once.
///
/// An id of this system is a prefix, the uuid of the model, an underscore and the object's number in the model, as in
/// "_zel_5376c05e-df72-49a6-85e0-5388c3fca417_14"; that of a model has no number. Ids of other tools are texts of any
/// form, but most of those end in an underscore and a number as well. Views the text, which must outlive it.
class ZEL_API ObjectId {
public:
    ObjectId() noexcept = default;
    explicit ObjectId(std::string_view text) noexcept;

    /// The id that files use for the object.
    [[nodiscard]] static std::string of(ImmutableClassObject const & object);
    /// The id that the object has in the file from which it was read, as far as that is known; else the one above.
    [[nodiscard]] static std::string inFileOf(ImmutableClassObject const & object);
    /// An id that no object of any model has.
    [[nodiscard]] static std::string makeNew();

    [[nodiscard]] std::string_view text() const noexcept { return fText; }
    [[nodiscard]] bool hasPrefix() const noexcept { return fText.starts_with(ID_PREFIX); }
    /// The number of the object; 0, which no object has, for any text but an id of this system with a number above 0.
    [[nodiscard]] std::int32_t number() const noexcept { return fNumber; }
    /// The second of the parts between underscores, where nothing counts as a part between two of them; empty if there
    /// is none.
    [[nodiscard]] std::string_view uuid() const noexcept;

    /// Whether the id is `head()` and, without leading zeros, `serial()`, whatever tool it comes from.
    [[nodiscard]] bool isRegular() const noexcept { return fHeadSize != 0; }
    /// The part up to the last underscore, with it; empty unless the id is regular.
    [[nodiscard]] std::string_view head() const noexcept { return fText.substr(0, fHeadSize); }
    /// Above 0 for a regular id.
    [[nodiscard]] std::size_t serial() const noexcept { return fSerial; }

private:
    std::string_view fText;
    std::size_t fHeadSize = 0;
    std::size_t fSerial = 0;
    std::int32_t fNumber = 0;
};

/// `id` after the prefix "_zel_".
[[nodiscard]] ZEL_API std::string getPrefixedId(std::string const & id);

/// `ObjectId::number` of the text.
[[nodiscard]] ZEL_API Integer getIdValue(std::string const & id);

/// `ObjectId::uuid` of the text.
[[nodiscard]] ZEL_API std::string getUuidValue(std::string const & id);

} // namespace ZEL
