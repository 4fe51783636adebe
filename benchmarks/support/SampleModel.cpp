#include "support/SampleModel.h"

#include "support/Names.h"

#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/PackageableElement.h>
#include <ZEL/metamodel/Type.h>

#include <algorithm>
#include <memory>
#include <string>

namespace ZEL::bench {

namespace {

std::unique_ptr<SampleModel> & sharedModel() {
    static std::unique_ptr<SampleModel> model;
    return model;
}

String numbered(char const * text, std::size_t number) { return String(numberedName(text, static_cast<int>(number))); }

} // namespace

SampleModel::SampleModel(int packages)
    : model(Factory::createNewModel()), factory(model.getFactory()), root(model.getRootDeviant()), fPackages(packages) {
    {
        Transaction transaction(root, "sample");
        fill();
        transaction.commit();
    }
    root.clearUndoStack();
}

void SampleModel::fill() {
    auto const classCount = static_cast<std::size_t>(fPackages) * kClasses;
    classes.reserve(classCount);
    properties.reserve(classCount * kProperties);
    Package const top = factory.createPackage();
    top.setName("model");
    model.setTopPackage(top);
    for (int p = 0; p < fPackages; ++p) {
        Package const package = factory.createPackage();
        package.setName(numbered("package", static_cast<std::size_t>(p)));
        top.getPackagedElements().push_back(package);
        for (int c = 0; c < kClasses; ++c) {
            addClass(package, c);
        }
    }
}

void SampleModel::addClass(Package const & package, int number) {
    Class const added = factory.createClass();
    // Some names are not plain ASCII, and some below need escapes in a file.
    added.setName(numbered(number % 50 == 7 ? "Class\u00e9t\u00e9" : "Class", static_cast<std::size_t>(number)));
    added.setVisibility(VisibilityKind::Public);
    added.setIsAbstract(number % 9 == 0);
    package.getPackagedElements().push_back(added);
    std::size_t const count = classes.size();
    if (count > 0) {
        added.getSuperClasses().push_back(classes[count * 7 / 11]);
    }
    classes.push_back(added);
    for (std::size_t p = 0; p < kProperties; ++p) {
        Property const property = factory.createProperty();
        property.setName(p == 3 ? String("attribute <3>") : numbered("attribute", p));
        property.setVisibility(VisibilityKind::Private);
        property.setType(classes[(count * kProperties + p) * 13 / 17 % classes.size()]);
        property.setLower(static_cast<int>(p % 2));
        property.setUpper(p % 3 == 0 ? UnlimitedNatural(UnlimitedNatural::GetUnlimitedValue()) : UnlimitedNatural(5U));
        property.setIsReadOnly(p % 2 == 0);
        added.getOwnedAttributes().push_back(property);
        properties.push_back(property);
    }
}

SampleModel & SampleModel::shared(int packages) {
    std::unique_ptr<SampleModel> & kept = sharedModel();
    if (kept == nullptr || kept->fPackages != packages) {
        kept.reset();
        kept = std::make_unique<SampleModel>(packages);
    }
    return *kept;
}

SampleModel & SampleModel::sharedOf(std::int64_t objects, std::int64_t others) {
    if (others != 0) {
        dropShared();
        for (std::int64_t i = 0; i < others; ++i) {
            SampleModel(packagesFor(objects)); // NOLINT(bugprone-unused-raii): it is to come and go
        }
    }
    return sharedOf(objects);
}

void SampleModel::dropShared() { sharedModel().reset(); }

int SampleModel::packagesFor(std::int64_t objects) {
    return std::max(1, static_cast<int>(objects / static_cast<std::int64_t>(objectCountOf(1) - 1)));
}

} // namespace ZEL::bench
