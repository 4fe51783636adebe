// The storages of the built-in metamodel's element types, made here once so that the container behind them is compiled
// in no other place.

#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Classifier.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/metamodel/Constraint.h>
#include <ZEL/metamodel/Element.h>
#include <ZEL/metamodel/ElementImport.h>
#include <ZEL/metamodel/EnumerationLiteral.h>
#include <ZEL/metamodel/Operation.h>
#include <ZEL/metamodel/PackageImport.h>
#include <ZEL/metamodel/PackageMerge.h>
#include <ZEL/metamodel/PackageableElement.h>
#include <ZEL/metamodel/Parameter.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/metamodel/ValueSpecification.h>
#include <ZEL/sequences/ListQImpl.h>
#include <ZEL/sequences/MultiIndexImpl.ipp>
#include <ZEL/values/Object.h>

#include <boost/multi_index/mem_fun.hpp>

namespace ZEL::Generic {

template class ListQImpl<ImmutableProperty>;
template class ListQImpl<ClassObject>;
template class ListQImpl<ImmutableObject>;
template class ListQImpl<ImmutableClassObject>;

namespace MultiIndexImplInternal {

using boost::multi_index::identity;

// `MultiIndexImpl` itself is all in its header.
template class MultiIndexImplForPrimitives<ClassObject, 0, identity<ClassObject>>;
template class MultiIndexImplForPrimitives<ImmutableProperty, 0, identity<ImmutableProperty>>;
template class MultiIndexImplForPrimitives<ImmutableObject, 0, identity<ImmutableObject>>;
template class MultiIndexImplForPrimitives<ImmutableClassObject, 0, identity<ImmutableClassObject>>;
template class MultiIndexImplForPrimitives<ImmutableClass, 0, identity<ImmutableClass>>;

template class MultiIndexImplForPrimitives<ImmutableObject, 1, identity<ImmutableObject>>;
template class MultiIndexImplForPrimitives<ImmutableClass, 1, identity<ImmutableClass>>;
template class MultiIndexImplForPrimitives<String, 1, identity<String>>;
template class MultiIndexImplForPrimitives<Class, 1, identity<Class>>;
template class MultiIndexImplForPrimitives<ClassObject, 1, identity<ClassObject>>;
template class MultiIndexImplForPrimitives<ImmutableProperty, 1, identity<ImmutableProperty>>;
template class MultiIndexImplForPrimitives<ImmutableClassObject, 1, identity<ImmutableClassObject>>;
template class MultiIndexImplForPrimitives<Classifier, 1, identity<Classifier>>;
template class MultiIndexImplForPrimitives<Comment, 1, identity<Comment>>;
template class MultiIndexImplForPrimitives<ElementImport, 1, identity<ElementImport>>;
template class MultiIndexImplForPrimitives<PackageImport, 1, identity<PackageImport>>;
template class MultiIndexImplForPrimitives<Constraint, 1, identity<Constraint>>;
template class MultiIndexImplForPrimitives<StereotypeObject, 1, identity<StereotypeObject>>;
template class MultiIndexImplForPrimitives<Operation, 1, identity<Operation>>;
template class MultiIndexImplForPrimitives<Property, 1, identity<Property>>;
template class MultiIndexImplForPrimitives<EnumerationLiteral, 1, identity<EnumerationLiteral>>;
template class MultiIndexImplForPrimitives<ValueSpecification, 1, identity<ValueSpecification>>;
template class MultiIndexImplForPrimitives<Type, 1, identity<Type>>;
template class MultiIndexImplForPrimitives<Parameter, 1, identity<Parameter>>;
template class MultiIndexImplForPrimitives<PackageableElement, 1, identity<PackageableElement>>;
template class MultiIndexImplForPrimitives<PackageMerge, 1, identity<PackageMerge>>;
template class MultiIndexImplForPrimitives<Element, 1, identity<Element>>;

// Keyed by name: for properties whose names stay as they are.
template class ZEL_API MultiIndexImplForPrimitives<
    Property, 1, boost::multi_index::const_mem_fun<ImmutableProperty, String, &ImmutableProperty::getName>>;

} // namespace MultiIndexImplInternal
} // namespace ZEL::Generic
