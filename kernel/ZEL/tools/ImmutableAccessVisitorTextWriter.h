#pragma once

#include <ZEL/metamodel/Property.h>
#include <ZEL/tools/ImmutableAccessVisitorTraversalContainment.h>

#include <cstdint>
#include <iosfwd>
#include <string>

namespace ZEL {

/// Prints an object and all that it contains as indented text, to look at.
///
///       [ Package name="library" id="2 {readonly}"
///         [ packagedElement name="Book" isAbstract="false" id="5 {readonly}" superClass="Medium:Class"
///         ] modelZEL="library:MetaModel"
///       ]
///
/// A contained object stands between brackets in lines of its own, under the property that holds it. Values and
/// references are attributes of it, with "readonly", "derived" and "composite" in braces where they apply; a reference
/// shows name and metaclass of its target. Derived properties and the objects without a container of a model are left
/// out, and what a stereotype instance holds.
///
/// A line begins with its line end, so the last one has none. Each level indents by two blanks, up to 1,000 levels:
/// from there on all lines begin at one column, since the text would otherwise grow with the square of the depth. Names
/// and values are printed as they are, with their line ends and whatever steers a terminal, unless a derived writer
/// overrides `shown`. The caller checks the state of the stream. Each text needs a writer of its own.
class ZEL_API ImmutableAccessVisitorTextWriter : public ImmutableAccessVisitorTraversalContainment {
public:
    /// The stream stays the caller's, and must live as long as the writer.
    explicit ImmutableAccessVisitorTextWriter(std::ostream & stream);
    ~ImmutableAccessVisitorTextWriter() override;

    bool visitProperty(ImmutableClassObject const & object, ImmutableProperty const & property) override;

protected:
    /// Nothing: each instance has been written as the value of a property.
    bool traverseStereotypeInstances(ImmutableClassObject const & object) override;
    /// What is printed for a name or a value: the text as it is.
    [[nodiscard]] virtual std::string shown(std::string text) const;

private:
    /// For which stereotype instances and models are objects like others.
    class ObjectWriter : public ImmutableAccessVisitorEmpty {
    public:
        explicit ObjectWriter(ImmutableAccessVisitorTextWriter & writer) : fWriter(writer) {}
        bool visitStereotypeObject(ImmutableStereotypeObject const & instance) override;
        bool visitModel(ImmutableModel const & model) override;

    protected:
        ImmutableAccessVisitorTextWriter & fWriter;
    };

    /// Writes values, references, and the beginning of contained objects.
    class PreWriter : public ObjectWriter {
    public:
        using ObjectWriter::ObjectWriter;
        bool visitClassObject(ImmutableClassObject const & object) override;
        bool visitValueObject(ImmutableValueObject const & value) override;
    };

    /// Writes the end of contained objects.
    class PostWriter : public ObjectWriter {
    public:
        using ObjectWriter::ObjectWriter;
        bool visitClassObject(ImmutableClassObject const & object) override;
    };

    /// What the metamodel says of a property.
    struct Known {
        ImmutableProperty property;
        std::string name;
        std::string decorations;
        bool isLeftOut = false;
        bool isPart = false;
    };

    struct KnownProperties;

    /// Asked of the metamodel once in a walk.
    [[nodiscard]] Known const & known(ImmutableProperty const & property);
    [[nodiscard]] bool isContained();
    void beginContained(ImmutableClassObject const & object);
    void endContained();
    void printReference(ImmutableClassObject const & object);
    void printValue(ImmutableValueObject const & value);
    void printTabs();
    void printPropertyDecorations();

    PreWriter fPreWriter;
    PostWriter fPostWriter;
    std::ostream & fStream;
    std::uint32_t fDepth = 0;
    internal::SoleOwner<KnownProperties> fKnown;
};

} // namespace ZEL
