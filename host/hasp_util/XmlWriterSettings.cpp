#include <hasp_util/XmlWriterSettings.h>

#include <stdexcept>
#include <utility>

namespace HASP {

namespace {

// In upper case, and without the hyphens and underscores in which spellings differ.
std::string plain(std::string const & encoding) {
    std::string result;
    for (char const c : encoding) {
        if (c != '-' && c != '_') {
            result += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        }
    }
    return result;
}

} // namespace

XmlWriterSettings::XmlWriterSettings(bool indent, std::string encoding, bool autoFlush)
    : fEncoding(std::move(encoding)), fIndent(indent), fIsLatin1(false), fAutoFlush(autoFlush) {
    std::string const name = plain(fEncoding);
    fIsLatin1 = name == "ISO88591" || name == "LATIN1";
    if (!fIsLatin1 && name != "UTF8") {
        throw std::invalid_argument("cannot write encoding '" + fEncoding + "', expected iso8859-1 or utf-8");
    }
}

} // namespace HASP
