#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace ZEL::bench {

/// A document as the calls of libxml2's text writer that write it.
class TextWriterPass {
public:
    /// Throws `std::runtime_error` for a document that is not well-formed.
    explicit TextWriterPass(std::string const & document);

    /// Writes the document in ISO-8859-1, indented by two blanks.
    void write(std::string const & path) const;

private:
    struct Element {
        int depth;
        std::string name;
        std::string text;
        std::vector<std::pair<std::string, std::string>> attributes;
    };

    std::vector<Element> fElements;
};

} // namespace ZEL::bench
