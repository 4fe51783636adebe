#pragma once

#include <ZEL/String.h>
#include <ZEL/deviants/Deviant.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace peers {

using Names = std::vector<ZEL::String>;

inline std::string numberedName(char const * text, int number) { return text + std::to_string(number); }

inline Names numberedNames(char const * text, int count) {
    Names names;
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        names.emplace_back(numberedName(text, i));
    }
    return names;
}

/// What is made besides a tree and its names.
struct SampleParts {
    bool handles = false; ///< of all objects, kept in the sample
    bool links = false;   ///< from each column to its type
};

/// A model with a tree of objects that all have names: schemas with an empty table and 100 tables of five columns
/// each.
template <class Metamodel> struct Sample {
    using Model = typename Metamodel::Model;
    using Named = typename Metamodel::Named;
    using Schema = typename Metamodel::Schema;
    using Table = typename Metamodel::Table;
    using Column = typename Metamodel::Column;

    Model model;
    Schema top;
    std::vector<Named> objects; ///< in the order of their making, if handles are asked for
    std::vector<Column> columns;
};

/// Makes samples in one transaction: each object is named, then put into its place. `NameOf` returns a name by its
/// number.
template <class Metamodel, class NameOf> class SampleMaker {
public:
    using Made = Sample<Metamodel>;

    SampleMaker(int size, SampleParts const & parts, NameOf nameOf)
        : fSize(size),
          fParts(parts),
          fNameOf(nameOf),
          fSample{Metamodel::makeModel(), {}, {}, {}},
          fFactory(fSample.model.getFactory()) {}

    /// Once. The transaction stays on the model's undo stack.
    Made make() {
        fSample.model.beginTransaction("make");
        fSample.top = named(Metamodel::makeSchema(fFactory));
        Metamodel::setTop(fSample.model, fSample.top);
        while (!isComplete()) {
            addSchema();
        }
        link();
        fSample.model.commitTransaction();
        return std::move(fSample);
    }

private:
    static constexpr int kTables = 100;
    static constexpr int kColumns = 5;

    [[nodiscard]] bool isComplete() const { return fMade == fSize; }

    template <class T> T named(T const & object) {
        object.setName(fNameOf(fMade++));
        if (fParts.handles) {
            fSample.objects.push_back(object);
        }
        return object;
    }

    void addSchema() {
        auto const schema = named(Metamodel::makeSchema(fFactory));
        Metamodel::add(fSample.top, schema);
        if (!isComplete()) {
            auto const type = addTable(schema);
            if (fParts.links) {
                fTypes.push_back(type);
            }
        }
        for (int i = 0; i < kTables && !isComplete(); ++i) {
            auto const table = addTable(schema);
            for (int j = 0; j < kColumns && !isComplete(); ++j) {
                addColumn(table);
            }
        }
    }

    typename Made::Table addTable(typename Made::Schema const & schema) {
        auto const table = named(Metamodel::makeTable(fFactory));
        Metamodel::add(schema, table);
        return table;
    }

    void addColumn(typename Made::Table const & table) {
        auto const column = named(Metamodel::makeColumn(fFactory));
        Metamodel::add(table, column);
        if (fParts.handles || fParts.links) {
            fSample.columns.push_back(column);
        }
    }

    /// Of the five columns of a table three have their type in the table's schema and two in the next one, so that
    /// files refer forwards.
    void link() {
        for (std::size_t i = 0; fParts.links && i < fSample.columns.size(); ++i) {
            std::size_t const schema = i / (kTables * kColumns);
            bool const isOwn = i % kColumns % 2 == 0;
            fSample.columns[i].setType(fTypes[isOwn ? schema : (schema + 1) % fTypes.size()]);
        }
    }

    int fSize;
    int fMade = 0;
    SampleParts fParts;
    NameOf fNameOf;
    Made fSample;
    typename Metamodel::Factory fFactory;
    std::vector<typename Made::Table> fTypes; ///< the empty table of each schema, if there are links
};

/// A sample of as many objects as names, with its making left on the undo stack.
template <class Metamodel> Sample<Metamodel> makeRecordedSample(Names const & names, SampleParts const & parts = {}) {
    auto const nameOf = [&](int number) -> ZEL::String const & { return names[static_cast<std::size_t>(number)]; };
    return SampleMaker<Metamodel, decltype(nameOf)>(static_cast<int>(names.size()), parts, nameOf).make();
}

/// The same without anything to undo.
template <class Metamodel> Sample<Metamodel> makeSample(Names const & names, SampleParts const & parts = {}) {
    auto sample = makeRecordedSample<Metamodel>(names, parts);
    sample.model.getRootDeviant().clearUndoStack();
    return sample;
}

} // namespace peers
