// Links: taken note of while files are read, resolved when the outermost one has ended.

#include <ZEL/GlobalXMIIdToObjectMap.h>
#include <ZEL/IdText.h>
#include <ZEL/Logger.h>
#include <ZEL/Messages.h>
#include <ZEL/MetaModelRegistry.h>
#include <ZEL/String.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/LinkedElement.h>
#include <ZEL/serializer/Reference.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <algorithm>
#include <limits>
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

} // namespace

void XmiReaderImpl::recordReference(ParseState & state, std::string const & text, ClassObject const & object,
                                    MetaProperty const & property) {
    std::string_view rest(text);
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
        file.links.push_back({object, &property, file.linkTexts.size(), id.size()});
        file.linkTexts += id;
    }
}

void XmiReaderImpl::resolveReferences() {
    Reference scratch;
    for (FileModel & file : fLinks.models()) {
        for (PendingLink const & link : file.links) {
            resolveReference(file, link, scratch);
        }
    }
    closeRun();
    for (LinkRun const & run : fLinkRuns) {
        restoreOrder(run);
    }
}

void XmiReaderImpl::resolveReference(FileModel & file, PendingLink const & link, Reference & scratch) {
    scratch.object = link.object;
    scratch.property = link.property->property;
    scratch.id = file.idOf(link);
    std::vector<LinkedElement> const links = fTransformers.resolveReference(file.uri, scratch);
    if (!links.empty()) {
        for (LinkedElement const & resolved : links) {
            setValue(resolved.object, metaClasses().of(resolved.property), resolved.target,
                     metaClasses().of(resolved.target));
        }
        return;
    }
    ClassObject const target = findTarget(file, link);
    if (target.getImplementationWithoutAssert() == nullptr) {
        reportUnresolved(link);
    } else if (setValue(link.object, *link.property, target, metaClasses().of(target))) {
        noteOrder(link, target);
    }
}

ClassObject XmiReaderImpl::findTarget(FileModel & file, PendingLink const & link) {
    std::string_view const id = file.idOf(link);
    // Mostly there is none, which a search from the front finds out much faster.
    std::size_t const sign = id.find('#') == std::string_view::npos ? std::string_view::npos : id.rfind('#');
    bool const isOutside = sign != std::string_view::npos;
    std::string_view const uri = isOutside ? id.substr(0, sign) : std::string_view(file.uri);
    std::string_view const fragment = isOutside ? id.substr(sign + 1) : id;

    TargetFile const & target = targetFile(uri);
    if (target.registered.isValid()) {
        ClassObject const found = findInMetaModel(target.registered, std::string(uri), std::string(fragment));
        if (found.isValid()) {
            return found;
        }
    }
    if (target.file == nullptr || target.file->objects.empty()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_TargetModelReferenceError, uri);
        return ClassObject();
    }
    ClassObject const * const found = target.file->objects.find(fragment);
    if (found == nullptr || !found->isValid()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_ReferenceResolutionError,
                                link.property->name, metaClasses().nameOf(link.object), fragment);
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
        entry->second = {MetaModelRegistry::instance()->getModelFromUri(entry->first), fLinks.find(entry->first)};
    }
    fLastTarget = &*entry;
    return entry->second;
}

ClassObject XmiReaderImpl::findInMetaModel(Model const & model, std::string const & uri, std::string const & fragment) {
    if (fragment.starts_with(XmiConstants::ZEL_ID_PREFIX)) {
        Integer const number = getIdValue(fragment);
        return number != Integer(0) ? model.getObjectById(number) : ClassObject();
    }
    auto const & objects = GlobalXMIIdToObjectMap::getMap();
    auto const found = objects.find(uri + "#" + fragment);
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

// --- order of links that are kept at both ends ---------------------------------------------------------------------------

/// Both ends of such a link stand in a file, and whichever is met first puts the objects in order at both; so what a
/// property lists has to be put in its own order afterwards.
void XmiReaderImpl::noteOrder(PendingLink const & link, ClassObject const & target) {
    if (link.property->isMany && link.property->hasOpposite) {
        if (fLinkRun.property != link.property || fLinkRun.object != link.object) {
            closeRun();
            fLinkRun.object = link.object;
            fLinkRun.property = link.property;
        }
        fLinkRun.targets.push_back(target);
    }
}

void XmiReaderImpl::closeRun() {
    if (fLinkRun.targets.size() > 1) {
        fLinkRuns.push_back(fLinkRun);
    }
    fLinkRun.targets.clear();
}

void XmiReaderImpl::restoreOrder(LinkRun const & run) {
    std::unordered_map<NSInterface::ObjectIntf const *, std::size_t> ranks;
    for (ClassObject const & target : run.targets) {
        ranks.emplace(target.getImplementation(), ranks.size());
    }
    std::vector<Object> const present = run.property->storage.get(run.object).toVector();
    std::vector<std::pair<std::size_t, Object>> wanted;
    wanted.reserve(present.size());
    bool isInOrder = true;
    std::size_t last = 0;
    for (Object const & value : present) {
        auto const found = ranks.find(value.getImplementation());
        bool const isListed = found != ranks.end();
        isInOrder = isInOrder && (!isListed || found->second >= last);
        last = isListed ? found->second : last;
        // What the file does not list here comes last, as it stands.
        wanted.emplace_back(isListed ? found->second : std::numeric_limits<std::size_t>::max(), value);
    }
    if (isInOrder) {
        return;
    }
    std::stable_sort(wanted.begin(), wanted.end(), [](auto const & a, auto const & b) { return a.first < b.first; });
    for (std::size_t i = 0; i < present.size(); ++i) {
        run.property->storage.removeOneEndOnly(run.object);
    }
    for (auto const & [rank, value] : wanted) {
        run.property->storage.setOrAddEndOnly(run.object, value);
    }
}

} // namespace ZEL::Serializer
