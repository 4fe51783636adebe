#include "kernel/ZEL/metamodel/ExpectedMetaModel.h"
#include "kernel/ZEL/metamodel/ModelFixture.h"

#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/ElementIntf.h>
#include <ZEL/metamodel/FieldText.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/RelationshipIntf.h>
#include <ZEL/metamodel/StereotypeObjectIntf.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>

#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <type_traits>
#include <unordered_map>

namespace ZEL::tests {
namespace {

using internal::ClassDescriptor;
using internal::PropertyDescriptor;

/// Derived properties that answer no reader.
bool isSilent(PropertyDescriptor const & property) {
    static std::set<std::string> const silent{"importedMember", "inheritedMember", "endType"};
    return silent.count(property.name) != 0 ||
           (std::string(property.name) == "type" && std::string(property.owner->name) == "Operation");
}

/// Properties that name the model or its factory are set when an object is made; numbers and lists of the model are its
/// own business.
bool isWritable(PropertyDescriptor const & property) {
    static std::set<std::string> const kept{
        "id", "modelZEL", "model", "metaModel", "factory", "unparented", "appliedStereotypeInstance"};
    return !property.isDerived && kept.count(property.name) == 0;
}

std::vector<PropertyDescriptor const *> propertiesOf(ClassDescriptor const & descriptor) {
    std::vector<PropertyDescriptor const *> properties;
    for (PropertyDescriptor const & own : descriptor.ownProperties) {
        properties.push_back(&own);
    }
    properties.insert(properties.end(), descriptor.clones.begin(), descriptor.clones.end());
    return properties;
}

std::string textOf(ImmutableObject const & object) {
    ImmutableValueObject const value(object);
    if (value.isValid()) {
        return object.getFullyQualifiedOrcaTypeName().str() + ":" + value.toString().str();
    }
    return object.isValid() ? std::to_string(ImmutableClassObject(object).getId()) : "(invalid)";
}

/// Every property can be read by reflection, derived ones too.
void expectReadable(ImmutableClassObject const & object, ClassDescriptor const & descriptor) {
    for (PropertyDescriptor const * const property : propertiesOf(descriptor)) {
        if (!isSilent(*property)) {
            String const name(property->name);
            EXPECT_NE(bool(object.has(name)), object.get(name).empty()) << property->name;
        }
    }
}

struct GeneratedClasses : ModelFixture {
    GeneratedClasses() {
        change([&] {
            for (ExpectedClass const & row : expectedClasses()) {
                ClassObject const example = factory.createFromString(String("ZEL." + std::string(row.name)));
                if (example.isValid()) {
                    examples.push_back(example);
                }
            }
        });
        EXPECT_EQ(20U, examples.size());
    }
    std::vector<ClassDescriptor const *> concreteClasses() const {
        std::vector<ClassDescriptor const *> classes{&descriptorOf(model), &descriptorOf(factory)};
        for (ClassObject const & example : examples) {
            classes.push_back(&descriptorOf(example));
        }
        return classes;
    }
    static ClassDescriptor const & descriptorOf(ClassObject const & object) {
        return object.getImplementation()->internal_body()->internal_descriptor();
    }

    ClassObject create(ClassDescriptor const & descriptor) {
        if (descriptor.builtAs == internal::BuiltAs::Model) {
            return model;
        }
        if (std::string(descriptor.name) == "Factory") {
            return factory;
        }
        return factory.createFromString(String(descriptor.orcaName));
    }

    /// A value that the property accepts and that differs from what it has at first.
    Object sampleFor(PropertyDescriptor const & property) {
        if (property.typeClass == nullptr) {
            std::map<std::string, char const *> const texts{
                {"ZEL.Boolean", std::string(property.defaultValue) == "true" ? "false" : "true"},
                {"ZEL.String", "text"},
                {"ZEL.Integer", "7"},
                {"ZEL.UnlimitedNatural", "9"},
                {"ZEL.PersistenceKind", "extension"},
                {"ZEL.VisibilityKind", "protected"},
                {"ZEL.ParameterDirectionKind", "out"},
                {"ZEL.PackageMergeKind", "define"}};
            return ValueObjectFactory::createFromString(property.typeName, texts.at(property.typeName));
        }
        for (ClassObject const & example : examples) {
            if (example.getImplementation()->cast(property.typeClass->classInfo()) != nullptr) {
                return create(descriptorOf(example));
            }
        }
        ADD_FAILURE() << property.name << " takes no object";
        return Object();
    }

    std::vector<ClassObject> examples; ///< one object of each class that a factory makes
};

/// The value without a box, by the road that the tools take.
internal::FieldValue fieldValueOf(ImmutableClassObject const & object, PropertyDescriptor const & property) {
    internal::BodyCore const & body = *object.getImplementation()->internal_body();
    auto const view = internal::MetaClassView::of(body.internal_descriptor());
    EXPECT_EQ(&property, view->find(property.name)->descriptor);
    return view->find(property.name)->value->get(*body.readState(object.getDeviant()));
}

/// The value by the operation of the body, which has a short way to the state, and by that of the state.
void checkRoads(ImmutableClassObject const & object, PropertyDescriptor const & property) {
    if (property.isMany() || property.storage != internal::Storage::Field) {
        return;
    }
    Deviant const deviant = object.getDeviant();
    NSInterface::ObjectIntf & body = *object.getImplementation();
    NSInterface::ObjectIntf & state = *body.getReadDeviant(deviant);
    EXPECT_EQ(property.single->has(&body, deviant), property.single->has(&state, deviant));
    auto const fromBody = Generic::RefTraits<Object>::fromRef(property.single->get(&body, deviant));
    auto const fromState = Generic::RefTraits<Object>::fromRef(property.single->get(&state, deviant));
    EXPECT_EQ(textOf(fromBody), textOf(fromState));
    EXPECT_TRUE(property.typeClass == nullptr || fromBody == fromState);
    if (property.typeClass == nullptr) {
        internal::FieldValue const unboxed = fieldValueOf(object, property);
        EXPECT_EQ(fromBody.isValid() && property.single->has(&body, deviant), unboxed.isSet());
        bool const isLiteral = unboxed.form() == internal::FieldValue::Form::Literal;
        EXPECT_EQ(isLiteral ? std::nullopt : std::optional(fromBody.toString().str()), internal::textOf(unboxed));
    }
}

TEST_F(GeneratedClasses, SetReadAndRemoveEachWritableProperty) {
    int checked = 0;
    for (ClassDescriptor const * const descriptor : concreteClasses()) {
        for (PropertyDescriptor const * const property : propertiesOf(*descriptor)) {
            SCOPED_TRACE(std::string(descriptor->name) + "." + property->name);
            // A model cannot be contained.
            bool const isContainerOfModel =
                descriptor->builtAs == internal::BuiltAs::Model && property->storage == internal::Storage::Container;
            if (!isWritable(*property) || isContainerOfModel) {
                continue;
            }
            String const name(property->name);
            ClassObject object;
            Object value;
            change([&] {
                object = create(*descriptor);
                value = sampleFor(*property);
                object.setOrAdd(name, value);
            });
            EXPECT_EQ(textOf(value), textOf(object.getOne(name)));
            EXPECT_EQ(1, object.get(name).size());
            EXPECT_EQ(textOf(value), textOf(object.get(name).at(0)));
            checkRoads(object, *property);
            expectReadable(object, *descriptor);
            if (!property->isMany()) {
                EXPECT_NO_THROW(object.setOrAdd(name, value)) << "an equal value was written, in no transaction";
            }
            change([&] { property->isMany() ? object.remove(name, value) : object.removeOne(name); });
            if (property->isMany() || property->typeClass != nullptr) {
                EXPECT_FALSE(object.has(name));
            }
            ++checked;
        }
    }
    EXPECT_GT(checked, 200);
}

TEST_F(GeneratedClasses, GiveNewObjectsTheirInitialValues) {
    open();
    for (ClassDescriptor const * const descriptor : concreteClasses()) {
        ClassObject const object = create(*descriptor);
        for (PropertyDescriptor const * const property : propertiesOf(*descriptor)) {
            SCOPED_TRACE(std::string(descriptor->name) + "." + property->name);
            if (!isWritable(*property) || property->typeClass != nullptr || property->isMany()) {
                continue;
            }
            bool const isRequired = property->lower == 1 && std::string(property->typeName) != "ZEL.String";
            EXPECT_EQ(isRequired || *property->defaultValue != '\0', bool(object.has(String(property->name))));
            if (*property->defaultValue != '\0') {
                EXPECT_EQ(property->defaultValue, object.getOne(String(property->name)).toString().str());
            }
        }
    }
}

TEST_F(GeneratedClasses, ShowTextsWithoutACopy) {
    Comment const comment = make<Comment>();
    EXPECT_TRUE(comment.getBodyView().empty());
    for (std::string const & text :
         {std::string("short"), std::string(100'000, 'x'), std::string("a\0b", 3), std::string()}) {
        change([&] { comment.setBody(text); });
        EXPECT_EQ(text, comment.getBodyView());
    }
    change([&] { comment.setBody("root"); });
    EXPECT_EQ(comment.getBodyView().data(), comment.getBodyView().data());

    Comment const drafted = comment.asDeviant(model.createDeviantWithName("draft"));
    EXPECT_EQ("root", drafted.getBodyView());
    Transaction transaction(drafted.getDeviant());
    drafted.setBody("draft");
    transaction.commit();
    EXPECT_EQ("draft", drafted.getBodyView());
    EXPECT_EQ("root", comment.getBodyView());
    NSInterface::ObjectIntf & state = *comment.getImplementation()->getReadDeviant(drafted.getDeviant());
    auto const * const asComment =
        static_cast<NSInterface::CommentIntf const *>(state.cast(NSInterface::CommentIntf::classInfo()));
    EXPECT_EQ("draft", asComment->getBodyView(drafted.getDeviant()));

    EXPECT_RAISES(kNullRef, (void)Comment().getBodyView());
    model.removeDeviantWithName("draft");
    EXPECT_RAISES("object accessed after its deviant has been removed", (void)drafted.getBodyView());
    model = MetaModel();
    EXPECT_RAISES("object accessed after its model has been destroyed", (void)comment.getBodyView());
}

TEST_F(GeneratedClasses, NameTheirObjects) {
    open();
    for (ClassDescriptor const * const descriptor : concreteClasses()) {
        SCOPED_TRACE(descriptor->name);
        ClassObject const object = create(*descriptor);
        std::string const name = descriptor->name;
        EXPECT_TRUE(object.isValid());
        EXPECT_EQ("ZEL." + name, object.getFullyQualifiedOrcaTypeName().str());
        EXPECT_EQ("ZEL.Immutable" + name, ImmutableClassObject(object).getFullyQualifiedOrcaTypeName().str());
        EXPECT_EQ(name, object.getMetaClass().getName().str());
        EXPECT_EQ(object.getMetaClass(), Object(object).getMetaType());
        EXPECT_EQ(object.getMetaClass().getImplementationWithoutAssert(), descriptor->runtime->metaClass());
        EXPECT_GT(object.getByteSize(), 0);
        Object const text = object.fromString(String("ignored"));
        EXPECT_EQ("", text.toString().str());
        EXPECT_TRUE(ImmutableValueObject(text).isValid());
    }
}

TEST_F(GeneratedClasses, HaveOneIdentityByWhateverRoad) {
    open();
    Property const property = factory.createProperty();
    NamedElement const byFeature{RedefinableElement(Feature(StructuralFeature(property)))};
    NamedElement const byType{TypedElement(MultiplicityElement(property))};
    NamedElement const narrowed((Object(property)));
    EXPECT_EQ(byFeature, byType);
    EXPECT_EQ(byFeature, narrowed);
    EXPECT_EQ(property, narrowed);
    EXPECT_EQ(property, Property(byType));
    std::set<Object> const objects{property, byFeature, byType, narrowed};
    EXPECT_EQ(1U, objects.size());

    Comment const wrong((Object(property)));
    EXPECT_FALSE(wrong.isValid());
    EXPECT_EQ(nullptr, wrong.getImplementationWithoutAssert());
    EXPECT_EQ(Deviant(), wrong.getDeviant());
    EXPECT_EQ(Element(model), ClassObject(Model(model)));

    MetaModel const draft = model.createDeviantWithName("draft");
    Object const general = Object(property).asDeviant(draft);
    EXPECT_EQ(property, general);
    EXPECT_EQ(draft.getDeviant(), general.getDeviant());
    EXPECT_EQ(draft.getDeviant(), ImmutableObject(property).asDeviant(draft).getDeviant());
    EXPECT_EQ(draft.getDeviant(), ValueObject(Integer(1)).asDeviant(draft).getDeviant());
}

template <class H>
concept Printable = requires(std::ostream & out, H const & handle) {
    out << handle;
};
template <class H, class Other>
concept RebindableTo = requires(H handle, Other const & other) {
    handle.rebind(other);
};

// These declare nothing pure but their destructors. Of an interface that is not abstract, clang without optimisation asks
// for tables that the library does not export.
static_assert(std::is_abstract_v<NSInterface::ClassObjectOperations> && std::is_abstract_v<NSInterface::ElementIntf> &&
              std::is_abstract_v<NSInterface::RelationshipIntf> &&
              std::is_abstract_v<NSInterface::StereotypeObjectIntf>);

TEST_F(GeneratedClasses, HandlesServeAsKeysAndConditionsAndCanBeRebound) {
    Comment const comment = make<Comment>();
    Comment const gone = make<Comment>();
    change([&] { gone.destroy(); });
    EXPECT_TRUE(comment && ImmutableObject(comment) && Object(String("x")));
    EXPECT_FALSE(gone || Comment() || Class(ClassObject(comment)) || PropertyStorage());
    static_assert(!std::is_convertible_v<Comment, bool> && !Printable<Comment> && !Printable<ImmutableObject>);

    MetaModel const draft = model.createDeviantWithName("draft");
    Comment const drafted = comment.asDeviant(draft);
    std::unordered_map<ImmutableClassObject, int> numbers{{comment, 1}};
    numbers[drafted] += 1;
    numbers[make<Comment>()] = 5;
    EXPECT_EQ(numbers.size(), 2U) << "by the object, whatever its deviant";
    EXPECT_EQ(numbers[comment], 2);
    EXPECT_EQ(std::hash<Object>()(comment), std::hash<ImmutableElement>()(comment));
    static_assert(!std::is_default_constructible_v<std::hash<ValueObject>>, "they compare by value");

    Comment handle = comment;
    handle = drafted;
    EXPECT_EQ(handle.getDeviant(), model.getDeviant()) << "it is on the same object already";
    handle.rebind(drafted);
    EXPECT_EQ(handle.getDeviant(), draft.getDeviant());
    ImmutableElement element;
    element.rebind(handle);
    EXPECT_EQ(element, comment);
    EXPECT_EQ(element.getDeviant(), draft.getDeviant());
    handle.rebind(Comment());
    EXPECT_FALSE(handle);
    static_assert(!RebindableTo<Comment, ImmutableComment> && !RebindableTo<ImmutableComment, Element>);
}

TEST_F(GeneratedClasses, HandlesAreATypeOfValues) {
    Comment const comment = make<Comment>();
    HASP::TypeInfo const & type = Comment::getTypeInfo();
    EXPECT_EQ(type.convertToString(HASP::any(comment)), comment.toString().str());
    EXPECT_EQ(type.convertToString(HASP::any(Comment())), "");
    EXPECT_THROW((void)type.convertToString(HASP::any(ClassObject(comment))), HASP::bad_any_cast);
    EXPECT_FALSE(HASP::any_cast<Comment>(type.defaultConstruct()).isValid());
    HASP::ErrorHolder errors;
    EXPECT_TRUE(type.convertFromString("x", errors).empty());
    EXPECT_EQ(errors.getMessage(), "Can't convert string 'x' to ZEL.Comment");
    EXPECT_EQ(type, Comment::getTypeInfo());
    EXPECT_FALSE(type == ImmutableComment::getTypeInfo() || type == Element::getTypeInfo() ||
                 type == Object::getTypeInfo() || ImmutableObject::getTypeInfo().isNull());
}

TEST_F(GeneratedClasses, InterfacesAreReachedFromThoseBelow) {
    NSInterface::PropertyIntf * const body = make<Property>().getImplementation();
    EXPECT_EQ(NSInterface::TypedElementIntf::upcast_helper(body),
              body->cast(NSInterface::TypedElementIntf::classInfo()));
    NSInterface::PropertyIntf const * const reading = body;
    EXPECT_EQ(NSInterface::ObjectIntf::upcast_helper(reading), body->cast(NSInterface::ObjectIntf::classInfo()));
    EXPECT_EQ(NSInterface::ClassObjectIntf::upcast_helper(static_cast<NSInterface::PropertyIntf *>(nullptr)), nullptr);
}

TEST_F(GeneratedClasses, ForwardRedefinedOperations) {
    open();
    ExtensionEnd const end = factory.createExtensionEnd();
    Stereotype const stereotype = factory.createStereotype();
    end.setStereotypeType(stereotype);
    EXPECT_EQ(stereotype, end.getType());
    end.setType(Type());
    EXPECT_FALSE(end.hasStereotypeType());
    EXPECT_RAISES(kInternalError, end.setType(factory.createClass()));
    Class const object = factory.createClass();
    Class const base = factory.createClass();
    object.getGenerals().push_back(base);
    EXPECT_EQ(base, object.getSuperClasses().at(0));
    EXPECT_EQ(object, base.getSubClasses().at(0));
    EXPECT_EQ(model.getFactory(), model.getFactoryFactory());
    EXPECT_EQ(factory.getModel(), factory.getMetaModel());
    Profile const profile = factory.createProfile();
    stereotype.setProfile(profile);
    EXPECT_EQ(profile, stereotype.getPackage());
}

TEST_F(GeneratedClasses, TakeAnEmptyTextForNone) {
    Comment const comment = make<Comment>();
    EXPECT_NO_THROW(comment.setBody(String()));
    EXPECT_THROW(comment.setBody(String("x")), Exception);
    EXPECT_THROW(comment.removeBody(), Exception);
    change([&] { comment.setBody(String("x")); });
    change([&] { comment.setBody(String("")); });
    EXPECT_FALSE(comment.hasBody());
    int const length = model.getUndoStackLength();
    change([&] { comment.removeBody(); });
    EXPECT_EQ(length + 1, model.getUndoStackLength());
}

TEST_F(GeneratedClasses, RefuseANamedDeviantAsPlaceOfARootState) {
    Deviant const named = model.createDeviantWithName(String("d")).getDeviant();
    open();
    Comment const comment = factory.createComment();
    EXPECT_RAISES("no root deviant passed to CommentImpl::createRootDeviation",
                  comment.getImplementation()->internal_body()->createRootDeviation(named));
    EXPECT_EQ(nullptr, comment.getImplementation()->internal_createDeviation(model.getDeviant()));
}

template <class H> struct NullHandle : testing::Test {};
using Handles =
    testing::Types<ClassObject, Element, NamedElement, Namespace, Type, Classifier, PackageableElement, Feature,
                   RedefinableElement, StructuralFeature, BehavioralFeature, TypedElement, MultiplicityElement,
                   Relationship, DirectedRelationship, ValueSpecification, FactoryObject, Model, StereotypeObject,
                   Association, Class, Comment, Constraint, DataType, ElementImport, Enumeration, EnumerationLiteral,
                   Expression, ExtensionEnd, Factory, MetaModel, OpaqueExpression, Operation, Package, PackageImport,
                   PackageMerge, Parameter, PrimitiveType, Profile, Property, Stereotype>;
TYPED_TEST_SUITE(NullHandle, Handles);

TYPED_TEST(NullHandle, RaisesItsTextOnEachOperation) {
    TypeParam const null;
    EXPECT_FALSE(null.isValid());
    expectRefused(null, String("x"), kNullRef, kNullRef);
    expectRefused(null, ImmutableProperty(), kNullRef, kNullRef);
    EXPECT_RAISES(kNullRef, null.getId());
    EXPECT_RAISES(kNullRef, null.getSiid());
    EXPECT_RAISES(kNullRef, null.toString());
    EXPECT_RAISES(kNullRef, null.getByteSize());
    EXPECT_RAISES(kNullRef, null.getMetaClass());
    EXPECT_RAISES(kNullRef, null.fromString(String("x")));
    EXPECT_RAISES(kNullRef, null.destroy());
}

TYPED_TEST(NullHandle, HasTheNameOfItsHandleClass) {
    std::string const name = TypeParam::MetaClass().getName().str();
    EXPECT_EQ("ZEL." + name, TypeParam::getOrcaName());
    EXPECT_EQ("ZEL.Immutable" + name, TypeParam::ImmutableForm::getOrcaName());
    EXPECT_EQ("ZEL." + name, TypeParam().getFullyQualifiedOrcaTypeName().str());
    EXPECT_EQ("ZEL.Immutable" + name, typename TypeParam::ImmutableForm().getFullyQualifiedOrcaTypeName().str());
    EXPECT_EQ(TypeParam(), Object());
}

} // namespace
} // namespace ZEL::tests
