// Parts of a model that stand in files of their own, each joined to its whole by a link in the place of the part.

#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>

namespace ZEL::Serializer {

bool XmiReaderImpl::joinFragment(ParseState & state, Context const & link) {
    MetaProperty const * const property = state.cursor.metaClass->find(link.getRole());
    // Files that were linked to stay as they are: nobody writes them, and links into their parts lead to these.
    bool const isOfOutermost = !isInLinkedFile() || state.fragment.host != nullptr;
    if (!isOfOutermost || property == nullptr || !property->isPart() || state.links == nullptr ||
        isGiven(state, *property)) {
        return false;
    }
    ClassObject const part = findPart(state, *property, link.getFirstValue());
    if (part.getImplementationWithoutAssert() == nullptr) {
        return false;
    }
    noteGiven(state, *property);
    state.linkDepth = state.elements.size(); // what stands in the element is said of the part
    state.linkFile = nullptr;
    state.linkedPart = part;
    return true;
}

ClassObject XmiReaderImpl::findPart(ParseState & state, MetaProperty const & property, std::string const & target) {
    std::size_t const sign = target.find('#');
    HASP::Uri const reference(target);
    if (sign == std::string::npos || sign + 1 == target.size() || !reference.isValid()) {
        return {};
    }
    std::optional<LinkedFiles::File> const file = fFiles.find(reference, baseOf(state, state.cursor.object));
    if (!file || file->path.empty() || file->uri == state.model.getUri().str()) {
        return {};
    }
    std::string const id = target.substr(sign + 1);
    ClassObject part;
    if (FileLinks const * const links = fLinks.find(file->uri)) {
        if (isOpen(*links)) {
            return {}; // a circle of files
        }
        part = moveFromTop(state, property, *links, id);
        if (part.getImplementationWithoutAssert() != nullptr) {
            return part;
        }
    }
    fFiles.readInto(state.model, *file, [&] {
        part = readFragment(state, property, file->uri, file->path, id);
        return part.getImplementationWithoutAssert() != nullptr;
    });
    return part;
}

/// A file may hold several parts: it is read for the first one that is linked to, and the others wait at the top.
ClassObject XmiReaderImpl::moveFromTop(ParseState & state, MetaProperty const & property, FileLinks const & links,
                                       std::string const & id) {
    ClassObject const * const part = links.find(ObjectId(id));
    if (part == nullptr || !part->isValid() || part->getModelZEL() != state.model) {
        return {};
    }
    Remainder::Standing & standing = fRemainders.of(*part).standing;
    if (standing != Remainder::Standing::AtTop ||
        !fValues.setPart(state.cursor.object, property, *part, metaClasses().of(*part), false, false)) {
        return {};
    }
    standing = Remainder::Standing::Within;
    return *part;
}

ClassObject XmiReaderImpl::readFragment(ParseState & state, MetaProperty const & property, std::string const & uri,
                                        std::string const & localFile, std::string const & id) {
    pushState(localFile);
    ParseState & file = this->state();
    file.model = state.model;
    file.links = &fLinks.of(uri);
    file.fragment.host = &state;
    file.fragment.property = &property;
    file.fragment.id = id;
    file.fragment.whole = &fLinks.of(state.model.getUri());
    bool isRead = false;
    try {
        static_cast<void>(run());
        isRead = true;
    } catch (Exception const &) {
        if (&this->state() != &file || !file.xml.hasError()) {
            throw;
        }
        // A file that cannot be read leaves the link as it is.
        logUnreadable(localFile);
        ++fReport.fUnreadFiles[uri];
        if (file.hasRoot) {
            fTransformers.postTransform(Model());
        }
    }
    ClassObject const part = isRead ? file.fragment.part : ClassObject();
    if (part.getImplementationWithoutAssert() != nullptr) {
        appendBeside(state, file.beside);
        state.fragments.push_back(uri);
        state.fragments.insert(state.fragments.end(), file.fragments.begin(), file.fragments.end());
    } else {
        giveUpFragment(file);
    }
    popState();
    return part;
}

bool XmiReaderImpl::placePart(ParseState & state, Made const & made) {
    ClassObject const & whole = state.fragment.host->cursor.object;
    if (!fValues.setPart(whole, *state.fragment.property, made.object, *made.metaClass, made.isNew, false)) {
        return false;
    }
    state.fragment.part = made.object;
    return true;
}

/// What stands beside the contents of a fragment comes to stand beside the whole. Its envelope goes: a file has one.
void XmiReaderImpl::appendBeside(ParseState & state, Remainder & beside) {
    auto & elements = state.beside.elements;
    elements.insert(elements.end(), std::make_move_iterator(beside.elements.begin()),
                    std::make_move_iterator(beside.elements.end()));
}

void XmiReaderImpl::giveUpFragment(ParseState & state) {
    for (ClassObject const & top : state.fragment.tops) {
        if (top.isValid()) {
            top.destroy();
        }
    }
    state.links->forget();
    forgetFragments(state);
}

/// Those that have become parts of what is given up.
void XmiReaderImpl::forgetFragments(ParseState & state) {
    for (std::string const & uri : state.fragments) {
        fLinks.of(uri).forget();
        fFiles.forget(uri);
    }
    state.fragments.clear();
}

bool XmiReaderImpl::isOpen(FileLinks const & links) const {
    return std::any_of(fStates.begin(), fStates.end(),
                       [&links](ParseState const & open) { return open.links == &links; });
}

} // namespace ZEL::Serializer
