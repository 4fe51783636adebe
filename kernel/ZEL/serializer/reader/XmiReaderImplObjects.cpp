// Elements that make objects, and the placing of objects in others.

#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/dialects/StandardReadTransforms.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace ZEL::Serializer {

XmiReaderImpl::Made XmiReaderImpl::makeTopLevel(ParseState & state, Context const & context) {
    Made made = createObject(state, context);
    if (made.metaClass == nullptr) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_InvalidTopLevelElement,
                                context.getUri(), context.getRoleName());
        startSkipping(state);
    }
    return made;
}

XmiReaderImpl::Made XmiReaderImpl::makeChild(ParseState & state, Context const & context) {
    MetaProperty const * const property = state.cursor.metaClass->find(context.getRole());
    if (property == nullptr) {
        startSkipping(state);
        return {};
    }
    if (property->isDataType) {
        state.isInText = true;
        state.text.clear();
        state.textRole = context.getRole();
        state.textProperty = property;
        return {};
    }
    if (!property->isComposite) {
        return {}; // what the element says is said of the present object
    }
    Made made = createObject(state, context);
    if (made.metaClass != nullptr && setValue(state.cursor.object, *property, made.object, *made.metaClass)) {
        if (isGiven(state, *property)) {
            reportReplaced(state.cursor.object, *property);
        }
        noteGiven(state, *property);
        return made;
    }
    giveUp(made);
    startSkipping(state);
    return {};
}

XmiReaderImpl::Made XmiReaderImpl::createObject(ParseState & state, Context const & context) {
    bool const hadModel = state.fileModel != nullptr;
    ObjectId const id(context.getFirstValue());
    auto [object, isNew] =
        fMerger->findOrCreate(state.model, context.getUri(), context.getRoleName(), context.getTypeUri(),
                              context.getTypeName(), context.getFirstValue(), id);
    if (!object.isValid()) {
        return {};
    }
    MetaClass & metaClass = metaClasses().of(object);
    if (metaClass.isModel()) {
        Model const model(object);
        if (!hadModel && !adoptModel(state, model, context)) {
            return {};
        }
        if (!state.isForeign) {
            if (std::string_view const uuid = id.uuid(); !uuid.empty()) {
                model.setUuidBase(String(uuid));
            }
        }
    }
    enterId(state, object, id);
    return {std::move(object), &metaClass, isNew};
}

/// Makes the model that of the file.
bool XmiReaderImpl::adoptModel(ParseState & state, Model const & model, Context const & context) {
    std::string const path = state.xml.getLocation().getSystemId();
    HASP::Uri const uri = HASP::Uri::fromLocalFile(path);
    if (!uri.isValid()) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_ModelUriSetError, path,
                                uri.error());
        return false;
    }
    if (context.getTypeName() != metaClasses().of(model).name()) {
        // Any top element of a known metamodel makes a model; this one's own content will hardly fit.
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_InvalidTopLevelElement,
                                context.getUri(), context.getRoleName());
    }
    model.setUri(String(uri.toString()));
    fParsedModels.insert_or_assign(uri.toString(), model);
    state.model = model;
    state.fileModel = &fLinks.of(uri.toString());
    fStandardRules->begin(model);
    return true;
}

void XmiReaderImpl::enterId(ParseState & state, ClassObject const & object, ObjectId const & id) {
    if (!id.text().empty() && !fileModelOf(state, object).objects.enter(id, object)) {
        Logger::instance()->warning("Id %s occurs more than once in model %s", id.text(),
                                    fileModelOf(state, object).uri);
    }
    if (fNesting != 0) {
        noteFileId(object, id); // any object of the file may become the target of a link from another one
    }
}

/// For those who write links to the object while the file stays as it is.
void XmiReaderImpl::noteFileId(ClassObject const & object, ObjectId const & id) {
    internal::BodyCore const & body = *object.getImplementation()->internal_body();
    if (body.internal_model() != nullptr && !id.text().empty() && id.text() != ObjectId::of(object)) {
        body.internal_model()->noteFileId(body.internal_id(), std::string(id.text()));
    }
}

FileModel & XmiReaderImpl::fileModelOf(ParseState & state, ClassObject const & object) {
    Model const model = object.getModelZEL();
    if (state.fileModel != nullptr && model == state.model) {
        return *state.fileModel;
    }
    return fLinks.of(model.isValid() ? model.getUri().str() : std::string());
}

bool XmiReaderImpl::setValue(ClassObject const & object, MetaProperty const & property, ClassObject const & value,
                             MetaClass const & valueClass) {
    bool isSet = false;
    if (valueClass.inheritsFrom(property.typeBody)) {
        isSet = fMerger->setProperty(object, property, value);
    } else {
        std::string const typeName = property.type.isValid() ? property.type.getName().str() : "[noname]";
        Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_TypeMismatch, typeName,
                                property.name, metaClasses().nameOf(object), valueClass.name(),
                                metaClasses().nameOf(value));
    }
    return isSet;
}

/// An object without a place would be in no file, but links to it would.
void XmiReaderImpl::giveUp(Made const & made) {
    if (made.metaClass != nullptr && made.isNew && !made.object.getContainerZEL().isValid()) {
        made.object.destroy();
    }
}

bool XmiReaderImpl::isGiven(ParseState const & state, MetaProperty const & property) {
    auto const first = state.given.begin() + static_cast<std::ptrdiff_t>(state.cursor.firstGiven);
    return !property.isMany && std::find(first, state.given.end(), &property) != state.given.end();
}

void XmiReaderImpl::noteGiven(ParseState & state, MetaProperty const & property) {
    if (!property.isMany) {
        state.given.push_back(&property);
    }
}

void XmiReaderImpl::reportReplaced(ClassObject const & object, MetaProperty const & property) {
    Logger::instance()->warning("A further value of property %s of object %s takes the place of the one before",
                                property.name, metaClasses().nameOf(object));
    fReport.addReplacedValue(metaClasses().of(object).name() + "." + property.name);
}

// --- what is left without a place ----------------------------------------------------------------------------------------

void XmiReaderImpl::noteUncontained() {
    for (Model const & model : fMerger->getReferredModels()) {
        model.getUnparented().forEach(
            [&](Object const & object) { fFormerlyUncontained.insert(object.getImplementation()); });
    }
}

void XmiReaderImpl::reportUncontained(std::vector<Model> const & models) {
    std::vector<ImmutableClassObject> found;
    for (Model const & model : models) {
        if (model.isValid()) {
            model.getUnparented().forEach([&](ClassObject const & object) {
                if (fFormerlyUncontained.count(object.getImplementation()) == 0) {
                    found.emplace_back(object);
                }
            });
        }
    }
    for (std::size_t i = 0; i < found.size(); ++i) {
        ImmutableClassObject const object = found[i]; // the list grows on the way
        std::string const name = object.getMetaClass().getName();
        fReport.addUncontainedObject(name);
        object.getContaineeZELs().forEach([&](ImmutableClassObject const & part) { found.push_back(part); });
    }
    for (auto const & [name, count] : fReport.uncontainedObjects()) {
        Logger::instance()->warning("Objects of class %s that nothing contains, and no file will hold: %s", name,
                                    std::to_string(count));
    }
}

void XmiReaderImpl::reportRejected(ClassObject const & object, MetaProperty const & property) {
    fReport.addRejectedValue(metaClasses().of(object).name() + "." + property.name);
}

} // namespace ZEL::Serializer
