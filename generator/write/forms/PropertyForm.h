#pragma once

#include "family/Family.h"
#include "write/Printer.h"

#include <algorithm>
#include <string>

namespace zelgen {

/// The two classes that implement the operations of an interface for an object.
enum class Holder { State, Body };

/// The texts of one form of property: what each kind of file contains for a property of this form.
///
/// Each text is a block of lines without indentation, or empty. Each `print` is a printer for the property `p` in a
/// file of the class. One object per form.
class PropertyForm {
public:
    virtual ~PropertyForm() = default;

    [[nodiscard]] static PropertyForm const & of(Property const & property);

    /// Operations of the interface. Those that both state and body override are pure and have no definition.
    [[nodiscard]] std::string declarations(Printer const & print, Property const & p) const {
        return operations(print, p, p);
    }
    [[nodiscard]] virtual std::string definitions(Printer const & print, Property const & p) const = 0;
    /// The same operations in an interface that redefines `p` by `by`.
    [[nodiscard]] std::string forwardDeclarations(Printer const & print, Property const & p,
                                                  Property const & by) const {
        return operations(print, p, by);
    }
    [[nodiscard]] virtual std::string forwardDefinitions(Printer const & print, Property const & p,
                                                         Property const & by) const = 0;
    /// Overrides in the states or the body of a class, which use the field; for stored properties only. The printer of
    /// the definitions knows the class of the state or body as `$C$`.
    [[nodiscard]] virtual std::string overrides(Printer const & print, Property const & p, Holder in) const = 0;
    [[nodiscard]] virtual std::string overrideDefinitions(Printer const & print, Property const & p,
                                                          Holder in) const = 0;
    /// Operations of `ImmutableX`, and those that `X` adds, all inline.
    [[nodiscard]] virtual std::string readers(Printer const & print, Property const & p) const = 0;
    [[nodiscard]] virtual std::string writers(Printer const & print, Property const & p) const = 0;
    /// The tag by which applications name the property at compile time.
    [[nodiscard]] virtual std::string tag(Printer const & print) const = 0;

protected:
    /// Declarations of the operations of `p`, which do what those of `by` do: virtual if `by` is `p` itself, otherwise
    /// overrides.
    [[nodiscard]] virtual std::string operations(Printer const & print, Property const & p,
                                                 Property const & by) const = 0;
    /// A printer that also knows the handle: `$Immutable$`, the prefix of its name, and `$H$`, the type of its values.
    [[nodiscard]] static Printer forHandle(Printer const & print, Property const & p, bool immutable);
    /// A printer that also knows the names of `by` as `$Q$` and `$Qs$`, and as `$I$` the qualifier of an operation of
    /// `by` in one of `p` that forwards to it.
    [[nodiscard]] static Printer forwarding(Printer const & print, Property const & p, Property const & by);

    [[nodiscard]] static std::string before(Property const & p, Property const & by) {
        return isOverride(p, by) ? "" : "virtual ";
    }
    [[nodiscard]] static std::string after(Property const & p, Property const & by, bool isPure = false) {
        return std::string(isOverride(p, by) ? " override" : "") + (isPure ? " = 0" : "");
    }

private:
    /// Whether the operations of `p` override those of a superclass: in a class that forwards them, and where what it
    /// redefines has redefined something itself, and so has the same names.
    [[nodiscard]] static bool isOverride(Property const & p, Property const & by) {
        return &p != &by || std::any_of(p.redefined.begin(), p.redefined.end(),
                                        [&p](Property const * redefined) { return redefined->base == p.base; });
    }
};

// The forms.
[[nodiscard]] PropertyForm const & valueForm();
[[nodiscard]] PropertyForm const & referenceForm();
[[nodiscard]] PropertyForm const & manyForm();

/// "PropertyIntf::isComposite", for the descriptor of `p`.
[[nodiscard]] std::string descriptorOf(Property const & p);
/// "ZEL::NSInterface::PropertyIntf".
[[nodiscard]] std::string interfaceOf(Class const & c);
/// The same for a generated interface; for one written by hand, the class derived from it that implements its
/// operations.
[[nodiscard]] std::string operationsOf(Class const & c);
/// "bodyProperty".
[[nodiscard]] std::string descriptorOperation(Property const & p);
/// "CommentImpl", "CommentDeviantImpl".
[[nodiscard]] std::string holderName(Class const & of, Holder holder);
/// The qualifier of an operation of `by` in one of `p` that forwards to it: its interface if both have the same name.
[[nodiscard]] std::string qualifierOf(Property const & p, Property const & by);
/// The text of the exception of an unimplemented derived property, as a literal.
[[nodiscard]] std::string unimplementedText(Property const & p);

/// The override that determines what a derived property shows on instances of the class `of`, with a printer for that
/// property.
[[nodiscard]] std::string viewDeclaration(Printer const & print);
[[nodiscard]] std::string viewDefinition(Printer const & print, Class const & of, View const & view);

} // namespace zelgen
