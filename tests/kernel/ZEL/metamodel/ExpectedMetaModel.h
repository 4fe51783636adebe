#pragma once

#include <vector>

namespace ZEL::Test {

/// One class of the built-in metamodel.
struct ExpectedClass {
    char const * name;
    char const * builtAs;
    bool isAbstract;
    std::vector<char const *> superClasses;
    int ownProperties;
    int clonedProperties;
};

/// One property, at the class that introduces it. Flags: "RO" read-only, "D" derived, "CP" composite, "O" ordered. The
/// other end is a property of a class if it has a dot in it, an end owned by the association if not.
struct ExpectedProperty {
    char const * owner;
    char const * name;
    char const * type;
    char const * multiplicity;
    char const * flags;
    char const * defaultValue;
    char const * persistence;
    char const * association;
    char const * otherEnd;
};

/// In the order in which they are declared.
inline std::vector<ExpectedClass> const & expectedClasses() {
    static std::vector<ExpectedClass> const classes{
        {"Property", "Class", false, {"StructuralFeature"}, 13, 23},
        {"NamedElement", "Class", true, {"Element"}, 4, 11},
        {"Package", "Class", false, {"PackageableElement", "Namespace"}, 6, 21},
        {"PrimitiveType", "Class", false, {"DataType"}, 0, 28},
        {"Enumeration", "Class", false, {"DataType"}, 1, 28},
        {"EnumerationLiteral", "Class", false, {"NamedElement"}, 1, 15},
        {"Type", "Class", true, {"PackageableElement"}, 1, 15},
        {"Object", "Class", true, {}, 0, 0},
        {"Element", "Class", true, {"ClassObject"}, 4, 7},
        {"ClassObject", "Class", true, {"Object"}, 7, 0},
        {"StereotypeObject", "Stereotype", true, {"ClassObject"}, 1, 7},
        {"Stereotype", "Class", false, {"Class"}, 1, 30},
        {"ExtensionEnd", "Class", false, {"Property"}, 2, 35},
        {"Profile", "Class", false, {"Package"}, 1, 27},
        {"Model", "Class", true, {"ClassObject"}, 4, 6},
        {"MetaModel", "MetaModel", false, {"Model", "Class"}, 2, 33},
        {"FactoryObject", "Class", true, {"ClassObject"}, 1, 7},
        {"Class", "Class", false, {"Classifier"}, 6, 25},
        {"Factory", "Class", false, {"FactoryObject"}, 1, 7},
        {"Classifier", "Class", true, {"Type", "Namespace"}, 4, 22},
        {"DirectedRelationship", "Class", true, {"Relationship"}, 2, 12},
        {"Feature", "Class", true, {"RedefinableElement"}, 1, 17},
        {"MultiplicityElement", "Class", true, {"TypedElement"}, 4, 16},
        {"Namespace", "Class", true, {"NamedElement"}, 6, 15},
        {"PackageableElement", "Class", true, {"NamedElement"}, 0, 15},
        {"RedefinableElement", "Class", true, {"NamedElement"}, 2, 15},
        {"Relationship", "Class", true, {"Element"}, 1, 11},
        {"StructuralFeature", "Class", true, {"Feature", "MultiplicityElement"}, 0, 23},
        {"TypedElement", "Class", true, {"NamedElement"}, 1, 15},
        {"ValueSpecification", "Class", true, {"TypedElement", "PackageableElement"}, 0, 16},
        {"Association", "Class", false, {"Classifier", "Relationship"}, 5, 27},
        {"DataType", "Class", false, {"Classifier"}, 2, 26},
        {"Constraint", "Class", false, {"PackageableElement"}, 3, 15},
        {"OpaqueExpression", "Class", false, {"ValueSpecification"}, 2, 16},
        {"Operation", "Class", false, {"BehavioralFeature", "MultiplicityElement"}, 14, 24},
        {"Parameter", "Class", false, {"MultiplicityElement"}, 3, 20},
        {"BehavioralFeature", "Class", true, {"Feature", "Namespace"}, 2, 24},
        {"ElementImport", "Class", false, {"DirectedRelationship"}, 4, 14},
        {"PackageImport", "Class", false, {"DirectedRelationship"}, 3, 14},
        {"Expression", "Class", false, {"ValueSpecification"}, 1, 16},
        {"Comment", "Class", false, {"Element"}, 2, 11},
        {"PackageMerge", "Class", false, {"DirectedRelationship"}, 3, 14},
    };
    return classes;
}

inline std::vector<ExpectedProperty> const & expectedProperties() {
    static std::vector<ExpectedProperty> const properties{
        {"Property", "isReadOnly", "Boolean", "1..1", "", "false", "default", "", ""},
        {"Property", "default", "String", "0..1", "", "", "default", "", ""},
        {"Property", "isComposite", "Boolean", "1..1", "", "false", "default", "", ""},
        {"Property", "isDerived", "Boolean", "1..1", "", "false", "default", "", ""},
        {"Property", "isDerivedUnion", "Boolean", "1..1", "", "false", "default", "", ""},
        {"Property", "class", "Class", "0..1", "", "", "default", "A_ownedAttribute_class", "Class.ownedAttribute"},
        {"Property", "owningAssociation", "Association", "0..1", "", "", "default", "A_ownedEnd_owningAssociation", "Association.ownedEnd"},
        {"Property", "redefinedProperty", "Property", "0..*", "", "", "default", "A_redefinedProperty_property", "property"},
        {"Property", "subsettedProperty", "Property", "0..*", "", "", "default", "A_subsettedProperty_property", "property"},
        {"Property", "opposite", "Property", "0..1", "D", "", "default", "A_opposite_property", "property"},
        {"Property", "datatype", "DataType", "0..1", "", "", "default", "A_ownedAttribute_datatype", "DataType.ownedAttribute"},
        {"Property", "association", "Association", "0..1", "", "", "default", "A_memberEnd_association", "Association.memberEnd"},
        {"Property", "isID", "Boolean", "1..1", "", "", "default", "", ""},
        {"NamedElement", "qualifiedName", "String", "0..1", "RO D", "", "default", "", ""},
        {"NamedElement", "name", "String", "0..1", "", "", "default", "", ""},
        {"NamedElement", "visibility", "VisibilityKind", "0..1", "", "", "default", "", ""},
        {"NamedElement", "namespace", "Namespace", "0..1", "RO D", "", "default", "A_ownedMember_namespace", "Namespace.ownedMember"},
        {"Package", "packagedElement", "PackageableElement", "0..*", "CP", "", "default", "A_packagedElement_owningPackage", "owningPackage"},
        {"Package", "ownedType", "Type", "0..*", "D CP", "", "default", "A_ownedType_package", "Type.package"},
        {"Package", "nestedPackage", "Package", "0..*", "D CP", "", "default", "A_nestedPackage_nestingPackage", "Package.nestingPackage"},
        {"Package", "nestingPackage", "Package", "0..1", "", "", "default", "A_nestedPackage_nestingPackage", "Package.nestedPackage"},
        {"Package", "packageMerge", "PackageMerge", "0..*", "CP", "", "default", "A_receivingPackage_packageMerge", "PackageMerge.receivingPackage"},
        {"Package", "uri", "String", "1..1", "", "", "default", "", ""},
        {"Enumeration", "ownedLiteral", "EnumerationLiteral", "0..*", "CP O", "", "default", "A_ownedLiteral_enumeration", "EnumerationLiteral.enumeration"},
        {"EnumerationLiteral", "enumeration", "Enumeration", "0..1", "", "", "default", "A_ownedLiteral_enumeration", "Enumeration.ownedLiteral"},
        {"Type", "package", "Package", "0..1", "", "", "default", "A_ownedType_package", "Package.ownedType"},
        {"Element", "persistence", "PersistenceKind", "0..1", "", "", "default", "", ""},
        {"Element", "ownedElement", "Element", "0..*", "RO D CP", "", "default", "A_ownedElement_owner", "Element.owner"},
        {"Element", "owner", "Element", "0..1", "RO D", "", "default", "A_ownedElement_owner", "Element.ownedElement"},
        {"Element", "ownedComment", "Comment", "0..*", "CP", "", "default", "A_ownedComment_owningElement", "owningElement"},
        {"ClassObject", "appliedStereotypeInstance", "StereotypeObject", "0..*", "CP", "", "transient", "A_appliedStereotype_baseElement", "StereotypeObject.baseElement"},
        {"ClassObject", "modelZEL", "Model", "0..1", "", "", "transient", "", ""},
        {"ClassObject", "containerZEL", "ClassObject", "0..1", "RO D", "", "default", "A_ClassObject_container_containee", "ClassObject.containeeZEL"},
        {"ClassObject", "containeeZEL", "ClassObject", "0..*", "RO D CP", "", "default", "A_ClassObject_container_containee", "ClassObject.containerZEL"},
        {"ClassObject", "rootModel", "Model", "0..1", "RO D", "", "default", "", ""},
        {"ClassObject", "id", "Integer", "1..1", "RO", "-1", "default", "", ""},
        {"ClassObject", "siid", "String", "1..1", "RO D", "", "default", "", ""},
        {"StereotypeObject", "baseElement", "ClassObject", "0..1", "RO D", "", "default", "A_appliedStereotype_baseElement", "ClassObject.appliedStereotypeInstance"},
        {"Stereotype", "profile", "Profile", "0..1", "", "", "default", "A_ownedStereotype_profile", "Profile.ownedStereotype"},
        {"ExtensionEnd", "isRequired", "Boolean", "1..1", "", "false", "default", "", ""},
        {"ExtensionEnd", "type", "Stereotype", "1..1", "", "", "default", "", ""},
        {"Profile", "ownedStereotype", "Stereotype", "0..*", "D CP", "", "default", "A_ownedStereotype_profile", "Stereotype.profile"},
        {"Model", "siid", "String", "1..1", "RO D", "", "default", "", ""},
        {"Model", "unparented", "ClassObject", "0..*", "RO", "", "default", "", ""},
        {"Model", "factory", "FactoryObject", "0..1", "CP", "", "transient", "", ""},
        {"Model", "uri", "String", "0..1", "", "", "default", "", ""},
        {"MetaModel", "topPackage", "Package", "0..1", "CP", "", "default", "", ""},
        {"MetaModel", "factory", "Factory", "0..1", "CP", "", "transient", "", ""},
        {"FactoryObject", "model", "Model", "0..1", "", "", "default", "", ""},
        {"Class", "ownedExtension", "ExtensionEnd", "0..*", "D", "", "default", "", ""},
        {"Class", "superClass", "Class", "0..*", "", "", "default", "A_superClass_subClass", "Class.subClass"},
        {"Class", "subClass", "Class", "0..*", "", "", "default", "A_superClass_subClass", "Class.superClass"},
        {"Class", "isAbstract", "Boolean", "1..1", "", "false", "default", "", ""},
        {"Class", "ownedAttribute", "Property", "0..*", "CP O", "", "default", "A_ownedAttribute_class", "Property.class"},
        {"Class", "ownedOperation", "Operation", "0..*", "CP O", "", "default", "A_ownedOperation_class", "Operation.class"},
        {"Factory", "metaModel", "MetaModel", "0..1", "", "", "default", "", ""},
        {"Classifier", "attribute", "Property", "0..*", "RO D", "", "default", "A_attribute_classifier", "classifier"},
        {"Classifier", "feature", "Feature", "0..*", "RO D", "", "default", "A_feature_featuringClassifier", "Feature.featuringClassifier"},
        {"Classifier", "general", "Classifier", "0..*", "", "", "default", "A_general_classifier", "classifier"},
        {"Classifier", "inheritedMember", "NamedElement", "0..*", "RO D", "", "default", "A_inheritedMember_classifier", "classifier"},
        {"DirectedRelationship", "source", "Element", "1..*", "RO D", "", "default", "A_source_directedRelationship", "directedRelationship"},
        {"DirectedRelationship", "target", "Element", "1..*", "RO D", "", "default", "A_target_directedRelationship", "directedRelationship"},
        {"Feature", "featuringClassifier", "Classifier", "0..*", "RO D", "", "default", "A_feature_featuringClassifier", "Classifier.feature"},
        {"MultiplicityElement", "isOrdered", "Boolean", "1..1", "", "false", "default", "", ""},
        {"MultiplicityElement", "isUnique", "Boolean", "1..1", "", "true", "default", "", ""},
        {"MultiplicityElement", "lower", "Integer", "0..1", "", "1", "default", "", ""},
        {"MultiplicityElement", "upper", "UnlimitedNatural", "0..1", "", "1", "default", "", ""},
        {"Namespace", "importedMember", "PackageableElement", "0..*", "RO D", "", "default", "A_importedMember_namespace", "namespace"},
        {"Namespace", "elementImport", "ElementImport", "0..*", "CP", "", "default", "A_elementImport_importingNamespace", "ElementImport.importingNamespace"},
        {"Namespace", "packageImport", "PackageImport", "0..*", "CP", "", "default", "A_packageImport_importingNamespace", "PackageImport.importingNamespace"},
        {"Namespace", "ownedMember", "NamedElement", "0..*", "RO D CP", "", "default", "A_ownedMember_namespace", "NamedElement.namespace"},
        {"Namespace", "member", "NamedElement", "0..*", "RO D", "", "default", "A_member_namespace", "namespace"},
        {"Namespace", "ownedRule", "Constraint", "0..*", "CP", "", "default", "A_ownedRule_context", "Constraint.context"},
        {"RedefinableElement", "redefinitionContext", "Classifier", "0..*", "RO D", "", "default", "A_redefinitionContext_redefinableElement", "redefinableElement"},
        {"RedefinableElement", "redefinedElement", "RedefinableElement", "0..*", "RO D", "", "default", "A_redefinedElement_redefinableElement", "redefinableElement"},
        {"Relationship", "relatedElement", "Element", "1..*", "RO D", "", "default", "A_relatedElement_relationship", "relationship"},
        {"TypedElement", "type", "Type", "0..1", "", "", "default", "A_type_typedElement", "typedElement"},
        {"Association", "isDerived", "Boolean", "1..1", "", "false", "default", "", ""},
        {"Association", "ownedEnd", "Property", "0..*", "CP O", "", "default", "A_ownedEnd_owningAssociation", "Property.owningAssociation"},
        {"Association", "endType", "Type", "1..*", "RO D", "", "default", "A_endType_association", "association"},
        {"Association", "memberEnd", "Property", "2..*", "O", "", "default", "A_memberEnd_association", "Property.association"},
        {"Association", "navigableOwnedEnd", "Property", "0..*", "", "", "default", "A_navigableOwnedEnd_association", "association"},
        {"DataType", "ownedAttribute", "Property", "0..*", "CP O", "", "default", "A_ownedAttribute_datatype", "Property.datatype"},
        {"DataType", "ownedOperation", "Operation", "0..*", "CP O", "", "default", "A_ownedOperation_datatype", "Operation.datatype"},
        {"Constraint", "constrainedElement", "Element", "0..*", "O", "", "default", "A_constrainedElement_constraint", "constraint"},
        {"Constraint", "specification", "ValueSpecification", "1..1", "CP", "", "default", "A_specification_owningConstraint", "owningConstraint"},
        {"Constraint", "context", "Namespace", "0..1", "", "", "default", "A_ownedRule_context", "Namespace.ownedRule"},
        {"OpaqueExpression", "body", "String", "0..*", "CP O", "", "default", "", ""},
        {"OpaqueExpression", "language", "String", "0..*", "CP O", "", "default", "", ""},
        {"Operation", "isQuery", "Boolean", "1..1", "", "false", "default", "", ""},
        {"Operation", "isOrdered", "Boolean", "1..1", "D", "false", "default", "", ""},
        {"Operation", "isUnique", "Boolean", "1..1", "D", "true", "default", "", ""},
        {"Operation", "lower", "Integer", "0..1", "D", "1", "default", "", ""},
        {"Operation", "upper", "UnlimitedNatural", "0..1", "D", "1", "default", "", ""},
        {"Operation", "class", "Class", "0..1", "", "", "default", "A_ownedOperation_class", "Class.ownedOperation"},
        {"Operation", "datatype", "DataType", "0..1", "", "", "default", "A_ownedOperation_datatype", "DataType.ownedOperation"},
        {"Operation", "raisedException", "Type", "0..*", "", "", "default", "A_raisedException_operation", "operation"},
        {"Operation", "redefinedOperation", "Operation", "0..*", "", "", "default", "A_redefinedOperation_operation", "operation"},
        {"Operation", "type", "Type", "0..1", "D", "", "default", "A_type_operation", "operation"},
        {"Operation", "ownedParameter", "Parameter", "0..*", "CP O", "", "default", "A_ownedParameter_operation", "Parameter.operation"},
        {"Operation", "precondition", "Constraint", "0..*", "CP", "", "default", "A_precondition_preContext", "preContext"},
        {"Operation", "postcondition", "Constraint", "0..*", "CP", "", "default", "A_postcondition_postContext", "postContext"},
        {"Operation", "bodyCondition", "Constraint", "0..1", "CP", "", "default", "A_bodyCondition_bodyContext", "bodyContext"},
        {"Parameter", "default", "String", "0..1", "", "", "default", "", ""},
        {"Parameter", "direction", "ParameterDirectionKind", "1..1", "", "in", "default", "", ""},
        {"Parameter", "operation", "Operation", "0..1", "", "", "default", "A_ownedParameter_operation", "Operation.ownedParameter"},
        {"BehavioralFeature", "ownedParameter", "Parameter", "0..*", "CP O", "", "default", "A_ownedParameter_ownerFormalParam", "ownerFormalParam"},
        {"BehavioralFeature", "raisedException", "Type", "0..*", "", "", "default", "A_raisedException_behavioralFeature", "behavioralFeature"},
        {"ElementImport", "visibility", "VisibilityKind", "1..1", "", "", "default", "", ""},
        {"ElementImport", "alias", "String", "0..1", "", "", "default", "", ""},
        {"ElementImport", "importedElement", "PackageableElement", "1..1", "", "", "default", "A_importedElement_elementImport", "elementImport"},
        {"ElementImport", "importingNamespace", "Namespace", "1..1", "", "", "default", "A_elementImport_importingNamespace", "Namespace.elementImport"},
        {"PackageImport", "visibility", "VisibilityKind", "1..1", "", "", "default", "", ""},
        {"PackageImport", "importedPackage", "Package", "1..1", "", "", "default", "A_importedPackage_packageImport", "packageImport"},
        {"PackageImport", "importingNamespace", "Namespace", "1..1", "", "", "default", "A_packageImport_importingNamespace", "Namespace.packageImport"},
        {"Expression", "operand", "ValueSpecification", "0..*", "CP O", "", "default", "A_operand_expression", "expression"},
        {"Comment", "body", "String", "0..1", "", "", "default", "", ""},
        {"Comment", "annotatedElement", "Element", "0..*", "", "", "default", "A_annotatedElement_comment", "comment"},
        {"PackageMerge", "mergeType", "PackageMergeKind", "1..1", "", "", "default", "", ""},
        {"PackageMerge", "receivingPackage", "Package", "1..1", "", "", "default", "A_receivingPackage_packageMerge", "Package.packageMerge"},
        {"PackageMerge", "mergedPackage", "Package", "1..1", "", "", "default", "A_mergedPackage_packageMerge", "packageMerge"},
    };
    return properties;
}

} // namespace ZEL::Test
