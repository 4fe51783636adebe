#pragma once

#include <ZEL/compare/Rules.h>
#include <ZEL/compare/StandardRules.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/StateCore.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace ZEL::Compare {

/// What is asked of one property of the objects of one class.
struct PropertyPlan {
    PropertyView const * view = nullptr;
    /// Its number of values must be within these.
    std::uint32_t lower = 0;
    std::uint32_t upper = kUnlimited;
    bool areTargetsChecked = false;                               ///< that the objects it leads to are there
    ZEL::internal::PropertyDescriptor const * opposite = nullptr; ///< that must lead back; null if none must
    /// Where the class that was met last has it.
    ZEL::internal::ClassDescriptor const * oppositeClass = nullptr;
    ZEL::internal::FieldDescriptor const * oppositeField = nullptr;

    static constexpr std::uint32_t kUnlimited = 0xFFFFFFFF;
};

/// How the objects of a class state which are more general than they.
struct GeneralPlan {
    ZEL::internal::FieldDescriptor const * direct = nullptr; ///< as the targets of this property
    /// As the targets of the property `general` of the objects in this one.
    ZEL::internal::FieldDescriptor const * parts = nullptr;
    PropertyView const * view = nullptr; ///< of one of the two; null for other classes
};

/// What is asked of the objects of one class.
struct ClassPlan {
    std::shared_ptr<MetaClassView const> view;
    ZEL::internal::ClassDescriptor const * descriptor = nullptr;
    std::vector<PropertyPlan> properties;
    std::vector<PropertyView const *> parts; ///< the properties that contain objects
    GeneralPlan generals;
    PropertyView const * name = nullptr;
    /// Names are compared among all parts, or among those of each property, or not.
    enum class Names { Together, ByProperty, Ignored } names = Names::Ignored;
    std::vector<ZEL::internal::ConstraintDescriptor const *> constraints;
    std::vector<Rule const *> added;
};

template <class Function>
void forEachLink(ZEL::internal::FieldDescriptor const & field, ZEL::internal::StateCore const & state,
                 Function function) {
    if (field.sequence != nullptr) {
        field.sequence(state).forEach(
            [&function](void * link) { function(*static_cast<NSInterface::ObjectIntf *>(link)); });
    } else if (NSInterface::ObjectIntf * const link = field.get(state)) {
        function(*link);
    }
}

/// The plans of the classes that have been met.
class ClassPlans {
public:
    explicit ClassPlans(Rules rules);

    [[nodiscard]] Rules const & rules() const noexcept { return fRules; }
    [[nodiscard]] bool asks(StandardRule rule) const noexcept { return fAsks[static_cast<std::size_t>(rule)]; }
    /// Makes it at the first question.
    [[nodiscard]] ClassPlan & of(ZEL::internal::ClassDescriptor const & descriptor) {
        return &descriptor == fLastClass ? *fLast : find(descriptor);
    }
    /// Forgets those of classes that have changed since.
    void forgetOutdated();

private:
    [[nodiscard]] ClassPlan & find(ZEL::internal::ClassDescriptor const & descriptor);
    [[nodiscard]] std::unique_ptr<ClassPlan> make(ZEL::internal::ClassDescriptor const & descriptor);
    void addProperties(ClassPlan & plan) const;
    void addRules(ClassPlan & plan) const;
    [[nodiscard]] ClassPlan::Names namesOf(ClassPlan const & plan);
    [[nodiscard]] bool hasNamespaces(ImmutableModel const & metamodel);

    Rules fRules;
    std::array<bool, standardRuleNames.size()> fAsks{};
    std::unordered_map<ZEL::internal::ClassDescriptor const *, std::unique_ptr<ClassPlan>> fPlans;
    std::map<std::string, bool> fHasNamespaces; ///< by the URI of the metamodel
    ZEL::internal::ClassDescriptor const * fLastClass = nullptr;
    ClassPlan * fLast = nullptr;
};

} // namespace ZEL::Compare
