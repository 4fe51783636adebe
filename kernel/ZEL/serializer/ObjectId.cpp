#include <ZEL/String.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/serializer/ObjectId.h>

#include <hasp_util/StringTokenizer.h>
#include <hasp_util/UUID.h>

#include <charconv>
#include <system_error>

namespace ZEL {

ObjectId::ObjectId(std::string_view text) noexcept : fText(text) {
    std::size_t const underscore = text.rfind(internal::kSiidSeparator);
    if (underscore == std::string_view::npos) {
        return;
    }
    char const * const end = text.data() + text.size();
    std::int32_t number = 0;
    auto const [stop, error] = std::from_chars(text.data() + underscore + 1, end, number);
    if (error != std::errc() || stop != end || number <= 0) {
        return;
    }
    if (text[underscore + 1] != '0') {
        fHeadSize = underscore + 1;
        fSerial = static_cast<std::size_t>(number);
    }
    // The uuid has no underscore.
    if (hasPrefix() && text.find(internal::kSiidSeparator, std::string_view(ID_PREFIX).size()) == underscore) {
        fNumber = number;
    }
}

std::string_view ObjectId::uuid() const noexcept {
    HASP::StringTokenizer parts(fText, "_");
    for (int part = 0; parts.hasMoreTokens(); ++part) {
        std::string_view const text = parts.nextToken();
        if (part == 1) {
            return text;
        }
    }
    return {};
}

std::string ObjectId::of(ImmutableClassObject const & object) { return getPrefixedId(object.getSiid().str()); }

std::string ObjectId::inFileOf(ImmutableClassObject const & object) {
    internal::BodyCore const & body = *object.getImplementation()->internal_body();
    internal::ModelCore const * const model = body.internal_model();
    std::string const * const id = model != nullptr ? model->fileIdOf(body.internal_id()) : nullptr;
    return id != nullptr ? *id : of(object);
}

std::string ObjectId::makeNew() { return getPrefixedId(HASP::UUID::createUuidAsString()); }

std::string getPrefixedId(std::string const & id) { return ID_PREFIX + id; }

Integer getIdValue(std::string const & id) { return Integer(ObjectId(id).number()); }

std::string getUuidValue(std::string const & id) { return std::string(ObjectId(id).uuid()); }

} // namespace ZEL
