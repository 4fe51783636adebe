#pragma once

#include <ZEL/compare/Diagnostic.h>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace ZEL::Compare {

/// One rule about the objects of a class and of its subclasses, made at run time.
struct Rule {
    std::string name;
    std::string className; ///< as registered: "library.Book"
    Severity severity = Severity::Error;
    std::string text; ///< what holds of an object that satisfies it: "a book has an author"
    /// What it throws passes through the check.
    std::function<bool(ImmutableClassObject const &)> isSatisfied;
};

/// The name by which a rule finds the class: "library.Book". Throws "An Internal Error has occurred" for a class of
/// which there can be no objects, since no C++ classes were made of its metamodel.
[[nodiscard]] ZEL_API std::string registeredNameOf(ImmutableClass const & metaClass);

/// What a check asks of each object; a value. By name there are
///
/// - the rules that follow from the metamodel of an object, whichever it is: `multiplicity`, `unresolvedLink`,
///   `oppositeEnds`, `uniqueNames`, `generalizationCycle`, `containment`;
/// - the constraints that the definitions of metamodels state of their classes;
/// - what has been added here, or registered for the whole process.
///
/// They are asked in this order; constraints of the class itself come before those of its superclasses, which a
/// constraint of the same name in a subclass replaces.
class ZEL_API Rules {
public:
    /// None.
    Rules() = default;
    /// Those of the metamodels, and those that are registered at the moment.
    [[nodiscard]] static Rules all();
    /// The first two kinds.
    [[nodiscard]] static Rules ofMetamodels();

    /// Throws if there is no function, or if a rule of this name about this class has been added before.
    Rules & add(Rule rule);
    /// Takes away what has been added by this name. Returns whether there was any.
    bool remove(std::string_view name);
    /// Those of them that have one of the names.
    [[nodiscard]] Rules only(std::vector<std::string> const & names) const;
    /// Those of them that have none of the names.
    [[nodiscard]] Rules without(std::vector<std::string> const & names) const;

    /// Whether one of that name would be asked, if a metamodel has it.
    [[nodiscard]] bool includes(std::string_view name) const;
    /// The names of all of them, each once and sorted; constraints are those of the metamodels that are registered.
    /// Linear in the size of these.
    [[nodiscard]] std::vector<std::string> names() const;

    /// Whether rules that follow from metamodels are among them, and constraints.
    [[nodiscard]] bool hasThoseOfMetamodels() const noexcept { return fHasThoseOfMetamodels; }
    /// In the order in which they were added. They are shared by copies.
    [[nodiscard]] std::vector<std::shared_ptr<Rule const>> const & added() const noexcept { return fAdded; }

private:
    bool fHasThoseOfMetamodels = false;
    std::vector<std::shared_ptr<Rule const>> fAdded;
    bool fIsLimited = false; ///< to `fOnly`
    std::set<std::string, std::less<>> fOnly;
    std::set<std::string, std::less<>> fWithout;
};

/// Makes the rule one of all that `Rules::all` returns from now on. Throws as `Rules::add` does.
ZEL_API void registerRule(Rule rule);
/// Takes back what was registered by this name; whoever holds rules keeps them. Returns whether there was any.
ZEL_API bool unregisterRule(std::string_view name);

} // namespace ZEL::Compare
