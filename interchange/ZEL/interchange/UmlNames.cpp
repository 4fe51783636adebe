#include <ZEL/interchange/MetaClasses.h>
#include <ZEL/interchange/UmlNames.h>
#include <ZEL/interchange/UmlReadTransforms.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/NamespaceRegistry.h>

#include <string_view>

namespace ZEL::Interchange {

using internal::MetaClassView;
using internal::PropertyView;
using Serializer::QualifiedName;

UmlNames::UmlNames(MetaClasses & classes) : fClasses(classes), fUri(NamespaceRegistry::instance()->getMetaUri("uml")) {
    if (fUri.empty()) {
        return;
    }
    // A model can only be the whole.
    fClassNames.emplace(QualifiedName(fUri, "Model"), QualifiedName(fUri, "Package"));
    for (UmlClassName const & row : umlClassNames()) {
        fClassNames.emplace(QualifiedName(fUri, row.otherName), QualifiedName(fUri, row.name));
    }
    for (UmlPropertyName const & row : umlPropertyNames()) {
        fPropertyNames[QualifiedName({}, row.otherName)].push_back(&row);
    }
    for (UmlImpliedType const & row : umlImpliedTypes()) {
        fImpliedTypes[QualifiedName({}, row.property)].push_back(&row);
    }
}

QualifiedName UmlNames::classOfPart(QualifiedName type) const {
    auto const found = fClassNames.find(type);
    return found != fClassNames.end() ? found->second : type;
}

QualifiedName UmlNames::propertyOf(MetaClassView const & owner, QualifiedName role) {
    auto const rows = fPropertyNames.find(role);
    if (rows == fPropertyNames.end()) {
        return role;
    }
    for (UmlPropertyName const * const row : rows->second) {
        if (isA(owner, row->metaClass)) {
            PropertyView const * const property = owner.find(row->name);
            // The URI of a model is that of its file.
            bool const isOfFile = owner.isModel() && property != nullptr && property->role == PropertyView::Role::Uri;
            return isOfFile ? role : QualifiedName({}, row->name);
        }
    }
    return role;
}

QualifiedName UmlNames::impliedType(MetaClassView const & owner, QualifiedName property) {
    auto const rows = fImpliedTypes.find(property);
    if (rows != fImpliedTypes.end()) {
        for (UmlImpliedType const * const row : rows->second) {
            if (isA(owner, row->metaClass)) {
                return QualifiedName(fUri, row->type);
            }
        }
    }
    return {};
}

std::vector<UmlDefault const *> const & UmlNames::defaultsOf(MetaClassView const & metaClass, UmlForm form) {
    auto const [entry, isNew] = fDefaults.try_emplace(&metaClass);
    if (isNew && !fUri.empty()) {
        for (UmlDefault const & row : umlDefaults()) {
            if (row.form == form && isA(metaClass, row.metaClass)) {
                entry->second.push_back(&row);
            }
        }
    }
    return entry->second;
}

bool UmlNames::isA(MetaClassView const & metaClass, std::string_view general) {
    MetaClassView const * const view = fClasses.find(QualifiedName(fUri, general));
    return view != nullptr && metaClass.inheritsFrom(view->metaClass().getImplementation());
}

bool isUml25Namespace(std::string const & uri) {
    if (!isUmlNamespace(uri)) {
        return false;
    }
    static std::string const eclipse = std::string(EMF_SCHEMA_BASE) + "/uml2/";
    static constexpr std::string_view omg = "http://www.omg.org/spec/UML/";
    std::string_view const text = uri;
    if (text.starts_with(eclipse)) {
        return text.substr(eclipse.size()) >= "5";
    }
    return text.starts_with(omg) && text.substr(omg.size()) >= "20131001";
}

} // namespace ZEL::Interchange
