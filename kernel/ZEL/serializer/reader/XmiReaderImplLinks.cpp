// Links: taken note of while files are read, resolved when the outermost one has ended.

#include <ZEL/String.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/LinkedElement.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/Reference.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <unordered_set>
#include <utility>

namespace ZEL::Serializer {
namespace {

bool isBlank(char c) noexcept { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// The text up to the next blank, taken off `rest`; empty if nothing but blanks is left. Links are so many that a
/// general tokenizer shows in the time of a read.
std::string_view takeToken(std::string_view & rest) noexcept {
    std::size_t begin = 0;
    while (begin < rest.size() && isBlank(rest[begin])) {
        ++begin;
    }
    std::size_t end = begin;
    while (end < rest.size() && !isBlank(rest[end])) {
        ++end;
    }
    std::string_view const token = rest.substr(begin, end - begin);
    rest.remove_prefix(end);
    return token;
}

std::unordered_map<std::int32_t, std::string> const & fileIdsOf(Model const & model) {
    return model.getImplementation()->internal_body()->internal_model()->fileIds();
}

} // namespace

void XmiReaderImpl::recordReference(ParseState & state, std::string const & text, ClassObject const & object,
                                    MetaProperty const & property) {
    std::string_view rest(text);
    bool isFurther = isGiven(state, property);
    for (std::string_view token = takeToken(rest); !token.empty(); token = takeToken(rest)) {
        std::string external;
        // Without this sign there is no fragment, and nothing but a URI with a fragment leads out of the file.
        if (token.find('#') != std::string_view::npos) {
            if (HASP::Uri const reference(token); reference.isValid()) {
                std::optional<std::string> const uri = followExternal(reference, object);
                if (!uri.has_value()) {
                    fReport.addUnresolvedReference(metaClasses().of(object).name() + "." + property.name);
                    continue;
                }
                external = *uri;
                external += token.substr(token.find('#')); // as it stands in the file, as ids do
            }
        }
        std::string_view const id = external.empty() ? token : std::string_view(external);
        FileModel & file = state.fileModel != nullptr ? *state.fileModel : fileModelOf(state, object);
        file.links.push_back(
            {object, &property, file.linkTexts.size(), static_cast<std::uint32_t>(id.size()), isFurther});
        file.linkTexts += id;
        noteGiven(state, property);
        isFurther = !property.isMany;
    }
}

void XmiReaderImpl::resolveReferences() {
    Reference scratch;
    for (FileModel & file : fLinks.models()) {
        for (PendingLink const & link : file.links) {
            resolveReference(file, link, scratch);
        }
    }
    restoreEnds();
}

void XmiReaderImpl::resolveReference(FileModel & file, PendingLink const & link, Reference & scratch) {
    scratch.object = link.object;
    scratch.property = link.property->property;
    scratch.id = file.idOf(link);
    std::vector<LinkedElement> const links = fTransformers.resolveReference(file.uri, scratch);
    if (!links.empty()) {
        for (LinkedElement const & resolved : links) {
            setLink(resolved.object, metaClasses().of(resolved.property), resolved.target, link.isFurther);
        }
        return;
    }
    ClassObject const target = findTarget(file, link);
    if (target.getImplementationWithoutAssert() == nullptr) {
        reportUnresolved(link);
    } else if (setLink(link.object, *link.property, target, link.isFurther)) {
        noteEnd(link, target);
    }
}

bool XmiReaderImpl::setLink(ClassObject const & object, MetaProperty const & property, ClassObject const & target,
                            bool isFurther) {
    Object const former =
        isFurther && property.storage.has(object) ? Object(property.storage.getOne(object)) : Object();
    bool const isSet = setValue(object, property, target, metaClasses().of(target));
    if (!isSet) {
        reportRejected(object, property);
    } else if (former.getImplementationWithoutAssert() != nullptr && former != target) {
        reportReplaced(object, property);
    }
    return isSet;
}

ClassObject XmiReaderImpl::findTarget(FileModel & file, PendingLink const & link) {
    std::string_view const id = file.idOf(link);
    // Mostly there is none, which a search from the front finds out much faster.
    std::size_t const sign = id.find('#') == std::string_view::npos ? std::string_view::npos : id.rfind('#');
    bool const isOutside = sign != std::string_view::npos;
    std::string_view const uri = isOutside ? id.substr(0, sign) : std::string_view(file.uri);
    ObjectId const fragment(isOutside ? id.substr(sign + 1) : id);

    TargetFile const & target = targetFile(uri);
    if (target.registered.isValid()) {
        ClassObject const found = findInMetaModel(target, uri, fragment);
        if (found.isValid()) {
            return found;
        }
    }
    if (target.file == nullptr || target.file->objects.empty()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_TargetModelReferenceError, uri);
        return ClassObject();
    }
    ClassObject const * const found = target.file->objects.find(fragment);
    if (isOutside && found != nullptr && found->isValid()) {
        noteFileId(*found, fragment);
    }
    if (found == nullptr || !found->isValid()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_ReferenceResolutionError,
                                link.property->name, metaClasses().nameOf(link.object), fragment.text());
        return ClassObject();
    }
    return *found;
}

XmiReaderImpl::TargetFile const & XmiReaderImpl::targetFile(std::string_view uri) {
    // Nearly always the same as before.
    if (fLastTarget != nullptr && fLastTarget->first == uri) {
        return fLastTarget->second;
    }
    auto const [entry, isNew] = fTargetFiles.try_emplace(std::string(uri));
    if (isNew) {
        TargetFile & target = entry->second;
        target.registered = MetaModelRegistry::instance()->getModelFromUri(entry->first);
        target.file = fLinks.find(entry->first);
        if (target.registered.isValid()) {
            for (auto const & [number, id] : fileIdsOf(target.registered)) {
                target.numbers.emplace(id, number);
            }
        }
    }
    fLastTarget = &*entry;
    return entry->second;
}

ClassObject XmiReaderImpl::findInMetaModel(TargetFile const & target, std::string_view uri, ObjectId const & id) {
    Model const & model = target.registered;
    if (id.hasPrefix()) {
        return id.number() != 0 ? model.getObjectById(Integer(id.number())) : ClassObject();
    }
    std::string const fragment(id.text());
    if (auto const number = target.numbers.find(fragment); number != target.numbers.end()) {
        return model.getObjectById(Integer(number->second));
    }
    auto const & objects = GlobalXMIIdToObjectMap::getMap();
    auto const found = objects.find(std::string(uri) + "#" + fragment);
    if (found == objects.end()) {
        return ClassObject();
    }
    ClassObject const object(found->second);
    if (object.isValid() && object.getRootModel() == model) {
        return object;
    }
    Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_TargetModelInconsistency, uri,
                            fragment);
    return ClassObject();
}

void XmiReaderImpl::reportUnresolved(PendingLink const & link) {
    fReport.addUnresolvedReference(metaClasses().of(link.object).name() + "." + link.property->name);
}

// --- links that stand at both ends ---------------------------------------------------------------------------------------

/// Both ends of such a link may stand in a file. Setting one changes the other: whichever is met first puts the objects in
/// order at both, and a single-valued end leaves what it belonged to. So what each end lists is put right at the end.
void XmiReaderImpl::noteEnd(PendingLink const & link, ClassObject const & target) {
    if (!link.property->hasOpposite) {
        return;
    }
    if (fLinkRuns.empty() || fLinkRuns.back().property != link.property || fLinkRuns.back().object != link.object) {
        fLinkRuns.push_back({link.object, link.property, fLinkTargets.size(), 0});
    }
    fLinkTargets.push_back(target);
    ++fLinkRuns.back().count;
}

void XmiReaderImpl::restoreEnds() {
    std::vector<LinkRun const *> runs;
    runs.reserve(fLinkRuns.size());
    for (LinkRun const & run : fLinkRuns) {
        runs.push_back(&run);
    }
    // What a file lists of one end may stand apart, with links of contained objects in between. Which end goes first does
    // not matter: none touches another.
    auto const endOf = [](LinkRun const * run) {
        return std::pair(run->property, run->object.getImplementationWithoutAssert());
    };
    std::stable_sort(runs.begin(), runs.end(), [&](LinkRun const * left, LinkRun const * right) {
        return std::less<>()(endOf(left), endOf(right));
    });
    std::vector<ClassObject> listed;
    for (auto run = runs.begin(); run != runs.end();) {
        LinkRun const & end = **run;
        listed.clear();
        for (; run != runs.end() && endOf(*run) == endOf(&end); ++run) {
            auto const first = fLinkTargets.begin() + static_cast<std::ptrdiff_t>((*run)->firstTarget);
            listed.insert(listed.end(), first, first + static_cast<std::ptrdiff_t>((*run)->count));
        }
        restoreEnd(end.object, *end.property, listed);
    }
}

void XmiReaderImpl::restoreEnd(ClassObject const & object, MetaProperty const & property,
                               std::vector<ClassObject> const & listed) {
    PropertyStorage const & storage = property.storage;
    if (!property.isMany) {
        if (storage.getOne(object) != listed.back()) {
            storage.setOrAddEndOnly(object, listed.back());
        }
        return;
    }
    std::vector<Object> const present = storage.get(object).toVector();
    std::vector<Object> wanted;
    std::unordered_set<NSInterface::ObjectIntf const *> seen;
    for (ClassObject const & target : listed) {
        if (seen.insert(target.getImplementation()).second) {
            wanted.emplace_back(target);
        }
    }
    // What the file does not list here comes last, as it stands.
    for (Object const & value : present) {
        if (seen.count(value.getImplementation()) == 0) {
            wanted.push_back(value);
        }
    }
    if (std::equal(present.begin(), present.end(), wanted.begin(), wanted.end())) {
        return;
    }
    for (std::size_t i = 0; i < present.size(); ++i) {
        storage.removeOneEndOnly(object);
    }
    for (Object const & value : wanted) {
        storage.setOrAddEndOnly(object, value);
    }
}

} // namespace ZEL::Serializer
