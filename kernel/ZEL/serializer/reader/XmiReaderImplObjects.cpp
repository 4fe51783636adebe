// Elements that make objects, and the placing of objects in others.

#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/dialects/StandardReadTransforms.h>
#include <ZEL/serializer/reader/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

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
    if (made.metaClass != nullptr &&
        fValues.setPart(state.cursor.object, *property, made.object, *made.metaClass, isGiven(state, *property))) {
        noteGiven(state, *property);
        return made;
    }
    giveUp(made);
    startSkipping(state);
    return {};
}

XmiReaderImpl::Made XmiReaderImpl::createObject(ParseState & state, Context const & context) {
    bool const hadModel = state.links != nullptr;
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
    fFiles.note(uri.toString(), model);
    state.model = model;
    state.links = &fLinks.of(uri.toString());
    fStandardRules->begin(model);
    return true;
}

void XmiReaderImpl::enterId(ParseState & state, ClassObject const & object, ObjectId const & id) {
    if (!id.text().empty()) {
        FileLinks & links = linksOf(state, object);
        if (!links.enter(id, object)) {
            Logger::instance()->warning("Id %s occurs more than once in model %s", id.text(), links.uri());
        }
    }
    if (isInLinkedFile()) {
        noteFileId(object, id); // any object of the file may become the target of a link from another one
    }
}

FileLinks & XmiReaderImpl::linksOf(ParseState & state, ClassObject const & object) {
    Model const model = object.getModelZEL();
    if (state.links != nullptr && model == state.model) {
        return *state.links;
    }
    return fLinks.of(model.isValid() ? model.getUri().str() : std::string());
}

/// An object without a place would be in no file, but links to it would.
void XmiReaderImpl::giveUp(Made const & made) {
    if (made.metaClass != nullptr && made.isNew && !made.object.getContainerZEL().isValid()) {
        made.object.destroy();
    }
}

} // namespace ZEL::Serializer
