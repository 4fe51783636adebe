#pragma once

#include <ZEL/base/SoleOwner.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace ZEL {

class Logger;

namespace internal {
struct PropertyView;
} // namespace internal

namespace util {

class HTMLQuickPage;

/// Writes an object and all it contains as one XHTML page, to be read in a browser.
///
/// Each object has a heading and a table of its properties, with links to the objects that are its values. Objects
/// follow one another, an owner before what it contains, at one level of the page; links to objects that are not
/// printed have no target. Rows of empty and derived properties, and of those that cannot be read, are hidden until the
/// reader ticks a box. A last row has what the object keeps of a file without understanding it, see `Remainder`. What a
/// property that is composite and not derived holds counts as contained.
///
/// Works by reflection alone, for any metamodel. Names and values go into the page as they are: markup in them is
/// markup of the page, scripts included, so a model from a stranger may only be printed by a class derived from this
/// one that escapes them in `markupOf`.
///
/// The model must not change during a print. A printer remembers what it has printed, for one page after another
/// without an object in two; it holds those objects. Linear in the size of the page, which has each value of each
/// property, and without recursion.
class ZEL_API HTMLPrinter {
public:
    HTMLPrinter();
    virtual ~HTMLPrinter();

    /// Writes the page `fileName`.html, in place of an earlier one, and returns its path. Throws if the element is
    /// invalid, if an object was printed before or is contained twice, and if the file cannot be made or written; the
    /// file is then left as far as it was written.
    virtual std::string print(ImmutableClassObject element, std::string fileName);

protected:
    /// What a derived printer overrides.
    enum class Overrides { Anything, MarkupAlone };

    /// A printer that overrides nothing of the operations below but `markupOf` says so here: it then makes its pages
    /// several times as fast, as this class itself does. The others are not called then, and `markupOf` once for what
    /// does not change during a print.
    explicit HTMLPrinter(Overrides overrides);

    // What the page is made of, for derived printers.

    /// The object, then its children. Called for each of them: by a call that is under way for another object, the
    /// children come after it has ended, in the same order.
    virtual void printElement(ImmutableClassObject object);
    virtual void printElementHead(ImmutableClassObject object);
    /// Appends the objects that this one contains to `children`.
    virtual void printElementBody(ImmutableClassObject object, std::vector<ImmutableClassObject> & children);
    /// One row for each value; those that are objects are appended to `children` if the property is composite and not
    /// derived. A value that cannot be read makes an error row.
    virtual void printSequenceValue(ImmutableSequence<ImmutableObject> values, bool isComposite, bool isDerived,
                                    std::vector<ImmutableClassObject> & children);

    /// The target of links to the object; unique among all models.
    virtual std::string helperGetID(ImmutableClassObject object);
    /// "unnamed" for an object without a name, "anonymous" for an empty one.
    virtual std::string helperGetName(ImmutableClassObject object);
    /// The name of the object's type, in guillemets if that is a stereotype.
    virtual std::string helperGetTypeName(ImmutableObject object);

    // The writing operations leave out an empty class, and put no line ends.
    virtual void writeStartTagWithID(std::string tag, std::string id, std::string cssClass);
    virtual void writeStartTag(std::string tag, std::string cssClass);
    virtual void writeElementWithID(std::string tag, std::string id, std::string cssClass, std::string text);
    virtual void writeElement(std::string tag, std::string cssClass, std::string text);
    virtual void writeEndTag(std::string tag);
    virtual std::string hyperLinkElement(std::string target, std::string text);
    /// The check boxes address the rules of the style sheet by their places.
    virtual void writeCss();
    virtual void writeJss();

    /// What is written into the page for a name, an identity, a value or an error of the model: the text as it is.
    virtual std::string markupOf(std::string text);

    /// As `print`, into the file `path`. The page and the log name `fileName` all the same.
    void printPage(ImmutableClassObject const & element, std::string const & fileName, std::string const & path);

private:
    internal::SoleOwner<std::ofstream> fOutput;

protected:
    std::ofstream & output; ///< the page, open during a print

private:
    class OwnTags;
    struct Printed;
    friend class HTMLQuickPage;

    void checkOutput() const;
    void printOneElement(ImmutableClassObject const & object);
    void printProperty(ImmutableClassObject const & object, internal::PropertyView const & property,
                       std::vector<ImmutableClassObject> & children);
    template <class Tags>
    void printValue(Tags & tags, ImmutableObject const & value, bool isContained,
                    std::vector<ImmutableClassObject> & children);
    /// The id of an object that is printed now. Throws if it has been printed.
    std::string enter(ImmutableClassObject const & object);
    /// Why the values cannot be read, if so.
    [[nodiscard]] static std::optional<std::string> read(ImmutableClassObject const & object,
                                                         internal::PropertyView const & property,
                                                         ImmutableSequence<ImmutableObject> & values,
                                                         std::vector<ImmutableObject> & elements);

    Overrides fOverrides = Overrides::Anything;
    internal::SoleOwner<Printed> fPrinted;
    Logger * fLogger;
    std::string fPath;                          ///< of the page
    std::vector<ImmutableClassObject> fToPrint; ///< what is still to come, the last one first
    bool fIsPrinting = false;                   ///< an outer call of `printElement` takes care of `fToPrint`
};

} // namespace util
} // namespace ZEL
