// Any bytes as an XML file; each namespace, value and text in it that is a URI keeps its meaning in every operation.

#include "Support.h"

#include <hasp_util/Uri.h>
#include <hasp_util/XmlReader.h>

namespace {

void lookAt(HASP::Uri const & base, std::string_view text) {
    HASP::Uri const uri(text);
    fuzz::require(uri.isValid() || (uri.toString() + uri.getPath() + uri.getFragment()).empty(),
                  "what is no URI has no parts");
    HASP::Uri const target = base.resolve(uri);
    if (!target.isValid()) {
        return;
    }
    fuzz::require(base.resolve(target.relativize(base)) == target,
                  "a relative reference means what it was made of: " + target.toString());
    if (std::string const file = target.toLocalFile(); !file.empty()) {
        fuzz::require(HASP::Uri::fromLocalFile(file).toLocalFile() != "", "a file has a URI: " + file);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size) {
    static TemporaryFolder const folder;
    HASP::Uri base("file:///a/b/c.xmi");
    std::string const file = folder.file("input.xml", {reinterpret_cast<char const *>(data), size});
    HASP::XmlReader reader(file);
    std::size_t depth = 0;
    while (reader.hasNext()) {
        HASP::XmlReader::EventType const event = reader.next();
        if (event == HASP::XmlReader::Characters) {
            lookAt(base, reader.getText());
            continue;
        }
        depth += event == HASP::XmlReader::StartElement ? 1 : -1;
        for (auto const & space : reader.namespaces()) {
            lookAt(base, *space.uri);
        }
        for (auto const & attribute : reader.attributes()) {
            lookAt(base, attribute.value);
            // What a file says of its own place is the base of what comes after.
            if (HASP::Uri const place = HASP::Uri(attribute.value).withoutFragment(); !place.getScheme().empty()) {
                base = place;
            }
        }
    }
    fuzz::require(reader.hasError() || depth == 0, "each element that begins ends");
    return 0;
}
