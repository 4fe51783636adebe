#include "DiffPage.h"

#include "Command.h"
#include "Text.h"

#include <ZEL/String.h>
#include <ZEL/compare/Label.h>
#include <ZEL/compare/Sentence.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/tools/ObjectsIn.h>

#include <fstream>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace cli {
namespace {

using ZEL::ImmutableClassObject;
using ZEL::Compare::Difference;
using ZEL::Compare::Differences;

constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Differences</title>
<style>
body { font-family: sans-serif; margin: 1em; }
.sides { display: flex; gap: 2em; }
.sides > div { flex: 1; min-width: 0; overflow-x: auto; }
ul { list-style: none; padding-left: 1.2em; margin: 0; }
details > summary { cursor: pointer; }
.class { color: #666; }
.added { background: #cfc; }
.removed { background: #fcc; }
.moved { background: #cef; }
.changed { background: #ffb; }
</style>
</head>
<body>
)";

std::string_view markOf(Difference::Kind kind) {
    using Kind = Difference::Kind;
    switch (kind) {
    case Kind::Added:
        return "added";
    case Kind::Removed:
        return "removed";
    case Kind::Moved:
        return "moved";
    default:
        return "changed";
    }
}

/// One of the two models as nested lists. What leads to a change is open.
class TreeOnPage {
public:
    TreeOnPage(std::ostream & page, char side) : fPage(page), fSide(side) {}

    /// What is new or gone goes ahead of what has moved, and that of what has changed.
    void mark(ImmutableClassObject const & object, std::string_view as, std::size_t difference) {
        auto const [place, isNew] = fMarks.try_emplace(object, Mark{as, difference});
        if (!isNew && as == "moved") {
            place->second.as = as;
        }
        for (ImmutableClassObject at = object.getContainerZEL(); at.isValid() && fOpen.insert(at).second;) {
            at = ImmutableClassObject(at.getContainerZEL());
        }
    }

    void write(ImmutableClassObject const & root);

private:
    struct Mark {
        std::string_view as;
        std::size_t difference;
    };

    void writeEntry(ImmutableClassObject const & object, bool hasContent);

    std::ostream & fPage;
    char fSide;
    std::map<ImmutableClassObject, Mark> fMarks;
    std::set<ImmutableClassObject> fOpen;
};

void TreeOnPage::writeEntry(ImmutableClassObject const & object, bool hasContent) {
    auto const mark = fMarks.find(object);
    fPage << "<li>" << (!hasContent ? "" : fOpen.count(object) != 0 ? "<details open><summary>" : "<details><summary>");
    if (mark != fMarks.end()) {
        fPage << "<span id=\"" << fSide << mark->second.difference << "\" class=\"" << mark->second.as << "\">";
    }
    fPage << "<span class=\"class\">" << escapedForHtml(object.getMetaClass().getName().str()) << "</span> "
          << escapedForHtml(ZEL::Compare::nameOf(object));
    fPage << (mark != fMarks.end() ? "</span>" : "") << (hasContent ? "</summary><ul>\n" : "</li>\n");
}

void TreeOnPage::write(ImmutableClassObject const & root) {
    std::vector<ImmutableClassObject> const objects = ZEL::objectsIn(root);
    std::vector<ImmutableClassObject> around; // of the next entry, those whose lists are not ended
    fPage << "<ul>\n";
    for (std::size_t i = 0; i < objects.size(); ++i) {
        ImmutableClassObject const container = objects[i].getContainerZEL();
        while (!around.empty() && around.back() != container) {
            fPage << "</ul></details></li>\n";
            around.pop_back();
        }
        bool const hasContent = i + 1 < objects.size() && objects[i + 1].getContainerZEL() == objects[i];
        writeEntry(objects[i], hasContent);
        if (hasContent) {
            around.push_back(objects[i]);
        }
    }
    for (std::size_t i = 0; i < around.size(); ++i) {
        fPage << "</ul></details></li>\n";
    }
    fPage << "</ul>\n";
}

} // namespace

void writeDiffPage(Differences const & differences, std::string const & nameOfLeft, std::string const & nameOfRight,
                   std::string const & file) {
    std::ofstream page(file, std::ios::binary);
    TreeOnPage left(page, 'a');
    TreeOnPage right(page, 'b');
    page << kHead << "<h1>" << escapedForHtml(nameOfLeft) << " and " << escapedForHtml(nameOfRight) << "</h1>\n<p>"
         << (differences.empty() ? "No differences." : counted(differences.size(), "difference") + ".")
         << "</p>\n<ol>\n";
    for (std::size_t i = 0; i < differences.size(); ++i) {
        Difference const & difference = differences[i];
        std::string_view const as = markOf(difference.kind);
        bool const isOfLeft = difference.left.isValid();
        page << "<li><a class=\"" << as << "\" href=\"#" << (isOfLeft ? 'a' : 'b') << i << "\">"
             << escapedForHtml(sentenceOf(difference)) << "</a></li>\n";
        if (isOfLeft) {
            left.mark(difference.left, as, i);
        }
        if (difference.right.isValid()) {
            right.mark(difference.right, as, i);
        }
    }
    page << "</ol>\n<div class=\"sides\">\n<div><h2>" << escapedForHtml(nameOfLeft) << "</h2>\n";
    left.write(differences.match().left());
    page << "</div>\n<div><h2>" << escapedForHtml(nameOfRight) << "</h2>\n";
    right.write(differences.match().right());
    page << "</div>\n</div>\n</body>\n</html>\n";
    page.close();
    if (!page) {
        throw Trouble("cannot write the page of differences");
    }
}

} // namespace cli
