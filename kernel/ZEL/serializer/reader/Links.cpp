#include <ZEL/String.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/serializer/LinkedElement.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/Reference.h>
#include <ZEL/serializer/TransformerRegistry.h>
#include <ZEL/serializer/reader/Links.h>
#include <ZEL/serializer/reader/ValueSetter.h>

namespace ZEL::Serializer {
namespace {

internal::ModelCore const * modelOf(ClassObject const & object) {
    return object.getImplementation()->internal_body()->internal_model();
}

} // namespace

void FileLinks::add(ClassObject const & object, MetaProperty const & property, std::string_view target,
                    QualifiedName type, bool isFurther) {
    fWaiting.push_back({object, &property, type, fTexts.size(), static_cast<std::uint32_t>(target.size()), isFurther});
    fTexts += target;
}

void FileLinks::forget() {
    fObjects = ObjectsById();
    fWaiting.clear();
    fTexts.clear();
    fContents.clear();
}

FileLinks & Links::of(std::string const & uri) {
    FileLinks *& file = fByUri[uri];
    if (file == nullptr) {
        file = &fFiles.emplace_back(uri);
    }
    return *file;
}

FileLinks const * Links::find(std::string const & uri) const {
    auto const found = fByUri.find(uri);
    return found != fByUri.end() ? found->second : nullptr;
}

void Links::clear() noexcept {
    fLastPlace = nullptr;
    fPlaces.clear();
    fEnds.clear();
    fByUri.clear();
    fFiles.clear();
}

void Links::resolve() {
    Reference scratch;
    for (FileLinks & file : fFiles) {
        for (FileLinks::Waiting const & link : file.fWaiting) {
            resolve(file, link, scratch);
        }
    }
    fEnds.restore();
}

void Links::resolve(FileLinks & file, FileLinks::Waiting const & link, Reference & scratch) {
    if (fRules.resolvesReferences() && resolveByRules(file, link, scratch)) {
        keepContent(file, link);
        return;
    }
    ClassObject const target = find(file, link);
    if (target.getImplementationWithoutAssert() == nullptr) {
        fValues.reportUnresolved(link.object, *link.property);
        keep(file, link);
    } else if (fValues.setLink(link.object, *link.property, target, link.isFurther)) {
        fEnds.note(link.object, *link.property, target);
        keepContent(file, link);
    } else {
        keep(file, link);
    }
}

void Links::keep(FileLinks const & file, FileLinks::Waiting const & link) {
    if (Remainders * const kept = fValues.kept()) {
        kept->of(link.object)
            .links.push_back({link.property->name, std::string(file.targetOf(link)), link.type.getUri(),
                              link.type.getName(), contentOf(file, link)});
    }
}

void Links::keepContent(FileLinks const & file, FileLinks::Waiting const & link) {
    if (std::string content = contentOf(file, link); !content.empty()) {
        std::string_view const target = file.targetOf(link);
        std::size_t const sign = target.rfind('#');
        fValues.kept()
            ->of(link.object)
            .elements.push_back({std::move(content), Remainder::Place::Inside, link.property->name,
                                 std::string(sign == std::string_view::npos ? target : target.substr(sign + 1))});
    }
}

std::string Links::contentOf(FileLinks const & file, FileLinks::Waiting const & link) {
    if (file.fContents.empty()) {
        return {};
    }
    auto const found = file.fContents.find(static_cast<std::size_t>(&link - file.fWaiting.data()));
    return found != file.fContents.end() ? found->second : std::string();
}

bool Links::resolveByRules(FileLinks const & file, FileLinks::Waiting const & link, Reference & scratch) {
    scratch.object = link.object;
    scratch.property = link.property->property;
    scratch.id = file.targetOf(link);
    std::vector<LinkedElement> const resolved = fRules.resolveReference(file.fUri, scratch);
    for (LinkedElement const & element : resolved) {
        fValues.setLink(element.object, fValues.metaClasses().of(element.property), element.target, link.isFurther);
    }
    return !resolved.empty();
}

ClassObject Links::find(FileLinks & file, FileLinks::Waiting const & link) {
    std::string_view const text = file.targetOf(link);
    // Mostly there is none, which a search from the front finds out much faster.
    std::size_t const sign = text.find('#') == std::string_view::npos ? std::string_view::npos : text.rfind('#');
    bool const isOutside = sign != std::string_view::npos;
    std::string_view const uri = isOutside ? text.substr(0, sign) : std::string_view(file.fUri);
    ObjectId const id(isOutside ? text.substr(sign + 1) : text);

    Place const & place = placeOf(uri);
    if (place.registered.isValid()) {
        ClassObject const found = findRegistered(place, uri, id);
        if (found.isValid()) {
            return found;
        }
    }
    if (place.file == nullptr || place.file->fObjects.empty()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_TargetModelReferenceError, uri);
        return ClassObject();
    }
    ClassObject const * const found = place.file->fObjects.find(id);
    if (found == nullptr || !found->isValid()) {
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_ReferenceResolutionError,
                                link.property->name, fValues.metaClasses().nameOf(link.object), id.text());
        return ClassObject();
    }
    if (isOutside && modelOf(*found) != modelOf(link.object)) {
        noteFileId(*found, id);
    }
    return *found;
}

Links::Place const & Links::placeOf(std::string_view uri) {
    // Nearly always the same as before.
    if (fLastPlace != nullptr && fLastPlace->first == uri) {
        return fLastPlace->second;
    }
    auto const [entry, isNew] = fPlaces.try_emplace(std::string(uri));
    if (isNew) {
        Place & place = entry->second;
        place.registered = MetaModelRegistry::instance()->getModelFromUri(entry->first);
        auto const file = fByUri.find(entry->first);
        place.file = file != fByUri.end() ? file->second : nullptr;
        if (place.registered.isValid()) {
            internal::BodyCore const & body = *place.registered.getImplementation()->internal_body();
            for (auto const & [number, id] : body.internal_model()->fileIds()) {
                place.numbers.emplace(id, number);
            }
        }
    }
    fLastPlace = &*entry;
    return entry->second;
}

ClassObject Links::findRegistered(Place const & place, std::string_view uri, ObjectId const & id) {
    Model const & model = place.registered;
    if (id.hasPrefix()) {
        return id.number() != 0 ? model.getObjectById(Integer(id.number())) : ClassObject();
    }
    std::string const text(id.text());
    if (auto const number = place.numbers.find(text); number != place.numbers.end()) {
        return model.getObjectById(Integer(number->second));
    }
    auto const & objects = GlobalXMIIdToObjectMap::getMap();
    auto const found = objects.find(std::string(uri) + "#" + text);
    if (found == objects.end()) {
        return ClassObject();
    }
    ClassObject const object(found->second);
    if (object.isValid() && object.getRootModel() == model) {
        return object;
    }
    Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_TargetModelInconsistency, uri, text);
    return ClassObject();
}

void noteFileId(ClassObject const & object, ObjectId const & id) {
    internal::BodyCore const & body = *object.getImplementation()->internal_body();
    if (body.internal_model() != nullptr && !id.text().empty() && id.text() != ObjectId::of(object)) {
        body.internal_model()->noteFileId(body.internal_id(), std::string(id.text()));
    }
}

} // namespace ZEL::Serializer
