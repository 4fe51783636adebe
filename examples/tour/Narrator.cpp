#include "Narrator.h"

#include <algorithm>

namespace tour {

void Narrator::step(std::string const & title) {
    fOut << (fStep == 0 ? "" : "\n");
    ++fStep;
    fTitle = title;
    fOut << fStep << ". " << title << '\n';
}

void Narrator::tell(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    fOut << "     " << text.substr(std::min(text.find_first_not_of(' '), text.size())) << '\n';
}

void Narrator::claim(bool holds, std::string const & text) {
    if (!holds) {
        throw Failure(place() + ": this does not hold: " + text);
    }
    ++fClaims;
    fOut << "  ok " << text << '\n';
}

std::string Narrator::place() const {
    return fStep == 0 ? "the beginning" : "step " + std::to_string(fStep) + " (" + fTitle + ")";
}

} // namespace tour
