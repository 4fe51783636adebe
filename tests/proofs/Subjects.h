#pragma once

#include <ZEL/ZEL.h>

#include <ostream>
#include <string>
#include <vector>

namespace ZEL::tests::proofs {

/// A metamodel on whose models something is shown.
struct Subject {
    std::string name;
    std::string uri;
    std::string root; ///< the property of a model that holds the object above all others
};

/// The built-in metamodel and that of an application; registered by the first call.
std::vector<Subject> const & subjects();
std::ostream & operator<<(std::ostream & out, Subject const & subject);

/// The classes of the subject that have instances, in the order in which its metamodel holds them.
std::vector<ImmutableClass> concreteClasses(Subject const & subject);

/// A model filled at random, stereotype instances included, in one transaction that is over.
Model randomModel(Subject const & subject, unsigned int seed);
/// Instances of the subject's stereotypes on some of the elements that they are for. No property of a file leads to them,
/// so the generator makes none.
void applyStereotypes(Subject const & subject, Model const & model, unsigned int seed);
Model emptyModel(Subject const & subject);

/// The object and all that it contains, owners first.
std::vector<ClassObject> contentOf(ClassObject const & root);
/// An object of the class in the model, not yet contained.
ClassObject makeObject(ImmutableClass const & metaClass, Model const & model);

/// Where two trees differ, for the message of a failed expectation; empty if they do not.
std::string difference(ImmutableObject const & a, ImmutableObject const & b);

} // namespace ZEL::tests::proofs
