#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/reader/ValueSetter.h>

namespace ZEL::Serializer {

bool ValueSetter::setText(ClassObject const & object, MetaProperty const & property, std::string_view text,
                          bool isFurther) {
    if (isFurther && fKept != nullptr) {
        // The first one stays, so that the file says the same when it is written and read again.
        fKept->keepText(object, property.name, text, isFurther);
        reportFurther(object, property);
        return false;
    }
    auto const present = [&] {
        return property.storage.has(object) ? property.storage.getOne(object).toString().str() : std::string();
    };
    std::string const former = isFurther ? present() : std::string();
    if (!fMerger->setProperty(object, property, text)) {
        reportRejected(object, property);
        if (fKept != nullptr) {
            fKept->keepText(object, property.name, text, property.isMany);
        }
        return false;
    }
    if (isFurther && former != present()) {
        reportReplaced(object, property);
    }
    // Without a default, and not required, a flag that is false is one of which nothing is said.
    bool const mayBeLost = fKept != nullptr && !property.isMany && property.defaultText.empty() && text == "false";
    if (mayBeLost && !property.storage.has(object)) {
        fKept->keepText(object, property.name, text, false);
    }
    return true;
}

void ValueSetter::setDerived(ClassObject const & object, MetaProperty const & property, std::string_view text) {
    bool isOpen = true;
    try {
        bool const isRequired = static_cast<std::int32_t>(property.property.getLower()) > 0;
        isOpen = isRequired ? property.storage.getOne(object).toString() == property.defaultText
                            : !property.storage.has(object); // a required one has a value in any case
    } catch (Exception const &) {
        // It cannot be read. Whether it can be set shows when it is.
    }
    if (isOpen) {
        setText(object, property, text, false);
    } else if (fKept != nullptr && property.storage.getOne(object).toString() != String(text)) {
        fKept->keepText(object, property.name, text, false);
    }
}

bool ValueSetter::setPart(ClassObject const & object, MetaProperty const & property, ClassObject const & part,
                          MetaClass const & partClass, bool isNew, bool isFurther) {
    bool const isSet = set(object, property, part, partClass, isNew);
    if (isSet && isFurther) {
        reportReplaced(object, property);
    }
    return isSet;
}

bool ValueSetter::setLink(ClassObject const & object, MetaProperty const & property, ClassObject const & target,
                          bool isFurther) {
    Object const former =
        isFurther && property.storage.has(object) ? Object(property.storage.getOne(object)) : Object();
    bool const isSet = set(object, property, target, metaClasses().of(target), false);
    if (!isSet) {
        reportRejected(object, property);
    } else if (former.getImplementationWithoutAssert() != nullptr && former != target) {
        reportReplaced(object, property);
    }
    return isSet;
}

bool ValueSetter::set(ClassObject const & object, MetaProperty const & property, ClassObject const & value,
                      MetaClass const & valueClass, bool isNew) {
    if (valueClass.inheritsFrom(property.typeBody)) {
        return fMerger->setProperty(object, property, value, isNew);
    }
    std::string const typeName = property.type.isValid() ? property.type.getName().str() : "[noname]";
    Logger::instance()->log(LogLevel::error, Messages::ZEL_Serializer_XmiReader_TypeMismatch, typeName, property.name,
                            metaClasses().nameOf(object), valueClass.name(), metaClasses().nameOf(value));
    return false;
}

std::string ValueSetter::labelOf(ClassObject const & object, MetaProperty const & property) const {
    return metaClasses().of(object).name() + "." + property.name;
}

void ValueSetter::reportUnresolved(ClassObject const & object, MetaProperty const & property) {
    ++fReport.fUnresolvedReferences[labelOf(object, property)];
}

void ValueSetter::reportFurther(ClassObject const & object, MetaProperty const & property) {
    ++fReport.fReplacedValues[labelOf(object, property)];
}

void ValueSetter::reportReplaced(ClassObject const & object, MetaProperty const & property) {
    Logger::instance()->warning("A further value of property %s of object %s takes the place of the one before",
                                property.name, metaClasses().nameOf(object));
    reportFurther(object, property);
}

void ValueSetter::reportRejected(ClassObject const & object, MetaProperty const & property) {
    ++fReport.fRejectedValues[labelOf(object, property)];
}

} // namespace ZEL::Serializer
