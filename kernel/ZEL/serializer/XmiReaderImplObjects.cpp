// Elements that make objects, and the placing of objects in others.

#include <ZEL/Exception.h>
#include <ZEL/IdText.h>
#include <ZEL/Logger.h>
#include <ZEL/Messages.h>
#include <ZEL/String.h>
#include <ZEL/serializer/XmiReaderImpl.h>

#include <hasp_util/Uri.h>

#include <utility>

namespace ZEL::Serializer {

XmiReaderImpl::Made XmiReaderImpl::makeTopLevel(ParseState & state, Context const & context) {
    Made made = createObject(state, context);
    if (made.metaClass == nullptr) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_InvalidTopLevelElement,
                                context.getUri(), context.getRoleName());
        startSkipping(state, context);
    }
    return made;
}

XmiReaderImpl::Made XmiReaderImpl::makeChild(ParseState & state, Context const & context) {
    MetaProperty const * const property = state.cursor.metaClass->find(context.getRole());
    if (property == nullptr) {
        startSkipping(state, context);
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
        return made;
    }
    startSkipping(state, context);
    return {};
}

XmiReaderImpl::Made XmiReaderImpl::createObject(ParseState & state, Context const & context) {
    bool const hadModel = state.fileModel != nullptr;
    std::string const & id = context.getFirstValue();
    ClassObject object = fMerger->createObject(state.model, context.getUri(), context.getRoleName(),
                                               context.getTypeUri(), context.getTypeName(), id);
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
            if (std::string const uuid = getUuidValue(id); !uuid.empty()) {
                model.setUuidBase(String(uuid));
            }
        }
    }
    enterId(state, object, id);
    return {std::move(object), &metaClass};
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
    return true;
}

void XmiReaderImpl::enterId(ParseState & state, ClassObject const & object, std::string const & id) {
    if (!id.empty() && !fileModelOf(state, object).objects.enter(id, object)) {
        Logger::instance()->warning("Id %s occurs more than once in model %s", id, fileModelOf(state, object).uri);
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

void XmiReaderImpl::reportRejected(ClassObject const & object, MetaProperty const & property) {
    fReport.addRejectedValue(metaClasses().of(object).name() + "." + property.name);
}

} // namespace ZEL::Serializer
