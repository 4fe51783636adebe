#pragma once

#include "Subjects.h"

#include <functional>
#include <random>

namespace ZEL::tests::proofs {

/// One change of one property of one object, by reflection.
struct Change {
    std::string what;
    std::function<void()> make;
    /// The objects at the other end that change with it; none for a property without an opposite.
    std::vector<ClassObject> partners{};
};

/// A model with some objects of each class of the subject, and values for most of their properties; in one transaction
/// that is over.
Model fullModel(Subject const & subject, unsigned int seed);

/// The same object, or the same value.
[[nodiscard]] bool areAlike(Object const & a, Object const & b);
/// Whether the property says what contains the object: writing it moves the object.
[[nodiscard]] bool isContainerEnd(ImmutableProperty const & property);

/// Finds changes for the objects of a model.
class Changes {
public:
    Changes(Subject const & subject, Model const & model, unsigned int seed);

    /// The changes that can be made, each kind once, with values chosen at random: set, replace, remove, append, erase,
    /// swap. A part is a new object, and is not replaced. A change can have no effect, as when a value is set to what
    /// it reads as. Empty for what cannot be written.
    [[nodiscard]] std::vector<Change> of(ClassObject const & object, ImmutableProperty const & property);

    /// Makes as many changes of objects at random, or ends them with all they contain; fewer where a change is refused.
    void makeAny(int count);

    /// The classes that new parts are made of.
    [[nodiscard]] std::vector<ImmutableClass> const & classes() const { return fClasses; }
    /// The objects that values are chosen from; to be collected anew when the model has changed.
    void refresh() { fContent = contentOf(fModel); }
    [[nodiscard]] std::vector<ClassObject> const & content() const { return fContent; }

    int below(std::size_t limit) { return static_cast<int>(fRandom() % limit); }
    template <class T> T const & any(std::vector<T> const & list) {
        return list[static_cast<std::size_t>(below(list.size()))];
    }

private:
    [[nodiscard]] std::vector<ImmutableClass> classesFor(ImmutableProperty const & property) const;
    [[nodiscard]] std::vector<Object> dataFor(ImmutableProperty const & property);
    [[nodiscard]] std::vector<Object> objectsFor(ImmutableProperty const & property) const;

    Model fModel;
    FactoryObject fFactory;
    std::vector<ImmutableClass> fClasses;
    std::vector<ClassObject> fContent;
    std::mt19937 fRandom;
};

} // namespace ZEL::tests::proofs
