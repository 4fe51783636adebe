#include "load/Diagnostics.h"

#include <algorithm>
#include <tuple>

namespace zelgen {

bool hasWord(std::vector<Word> const & words, std::string_view text) {
    return std::any_of(words.begin(), words.end(), [text](Word const & word) { return word.text == text; });
}

void Diagnostics::add(std::string const & file, Mark mark, std::string const & text) {
    fMessages.push_back({file, mark, text});
}

void Diagnostics::warn(std::string const & file, Mark mark, std::string const & text) {
    fWarnings.push_back({file, mark, "warning: " + text});
}

std::vector<std::string> Diagnostics::textsOf(std::vector<Message> sorted) {
    std::stable_sort(sorted.begin(), sorted.end(), [](Message const & a, Message const & b) {
        return std::tie(a.file, a.mark.line, a.mark.column) < std::tie(b.file, b.mark.line, b.mark.column);
    });
    std::vector<std::string> texts;
    for (Message const & message : sorted) {
        std::string const place = message.mark.line == 0 ? ""
                                                         : std::to_string(message.mark.line) + ':' +
                                                               std::to_string(message.mark.column) + ':';
        texts.push_back(message.file + ':' + place + ' ' + message.text);
    }
    return texts;
}

} // namespace zelgen
