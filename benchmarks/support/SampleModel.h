#pragma once

#include <ZEL/deviants/Deviant.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/Property.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ZEL::bench {

/// A model of packages with 100 classes each, of nine properties each, made through the typed operations.
///
/// Classes and properties have a name and a visibility; each class has a superclass, each property a type among the
/// classes made before, a lower and an upper bound. The same numbers give the same model. It has no undo history.
class SampleModel {
public:
    static constexpr int kClasses = 100;  ///< in a package
    static constexpr int kProperties = 9; ///< in a class

    explicit SampleModel(int packages);

    /// The model made last is kept, so that benchmarks of the same size share it, until another size is requested.
    /// Users must leave it as it was, except for names.
    static SampleModel & shared(int packages);
    /// The same for about this number of objects.
    static SampleModel & sharedOf(std::int64_t objects) { return shared(packagesFor(objects)); }
    /// The same after a number of other models of this size have come and gone, whose memory it takes over.
    static SampleModel & sharedOf(std::int64_t objects, std::int64_t others);
    static void dropShared();
    /// The number of packages, including the top package, classes and properties.
    [[nodiscard]] static std::size_t objectCountOf(int packages) noexcept {
        return 1 + static_cast<std::size_t>(packages) * (1 + kClasses * (1 + kProperties));
    }
    /// The number of packages for about this number of objects.
    [[nodiscard]] static int packagesFor(std::int64_t objects);

    [[nodiscard]] std::size_t objectCount() const noexcept { return objectCountOf(fPackages); }

    MetaModel model;
    Factory factory;
    Deviant root;
    std::vector<Class> classes;
    std::vector<Property> properties;

private:
    void fill();
    void addClass(Package const & package, int number);

    int fPackages;
};

} // namespace ZEL::bench
