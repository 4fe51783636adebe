#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zelgen {

/// A place in a definition file, counted from 1.
struct Mark {
    int line = 0;
    int column = 0;
    std::size_t part = 0; ///< which file of a definition that consists of several
};

/// A word of a definition and its place.
struct Word {
    std::string text;
    Mark mark;

    [[nodiscard]] bool empty() const { return text.empty(); }
    [[nodiscard]] bool isTrue() const { return text == "true"; }
};

/// Whether one of the words is `text`.
[[nodiscard]] bool hasWord(std::vector<Word> const & words, std::string_view text);

/// Collects the mistakes of a definition, so that one run reports all of them.
///
/// A message has the form `file:line:col: what was found, what was expected`.
class Diagnostics {
public:
    void add(std::string const & file, Mark mark, std::string const & text);
    /// Adds a warning about something that is allowed but may surprise. It does not count as a mistake.
    void warn(std::string const & file, Mark mark, std::string const & text);

    [[nodiscard]] bool empty() const noexcept { return fMessages.empty(); }
    /// Sorted by file and place.
    [[nodiscard]] std::vector<std::string> messages() const { return textsOf(fMessages); }
    /// `file:line:col: warning: what was found`, sorted by file and place.
    [[nodiscard]] std::vector<std::string> warnings() const { return textsOf(fWarnings); }

private:
    struct Message {
        std::string file;
        Mark mark;
        std::string text;
    };
    [[nodiscard]] static std::vector<std::string> textsOf(std::vector<Message> sorted);

    std::vector<Message> fMessages;
    std::vector<Message> fWarnings;
};

} // namespace zelgen
