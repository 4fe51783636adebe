#pragma once

#include "Metamodels.h"
#include "Sample.h"
#include "Stopwatch.h"

#include <ZEL/String.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/serializer/writer/XmiWriter.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/tools/ContentsWalk.h>
#include <ZEL/tools/ImmutableAccessVisitorTraversalContainment.h>
#include <ZEL/values/Object.h>

#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>

namespace peers {

inline void require(bool isTrue, char const * failure) {
    if (!isTrue) {
        throw std::runtime_error(failure);
    }
}

/// Bytes of memory that the process has from the system at present.
inline double residentBytes() {
    constexpr double page = 4096;
    double whole = 0;
    double resident = 0;
    std::ifstream("/proc/self/statm") >> whole >> resident;
    return resident * page;
}

/// The work that is done in zel as `emf/Measures.java` does it in EMF, on trees of a number of objects. Each measure
/// prints a line with its name and cost: nanoseconds for an object or a transaction, or bytes.
template <class Metamodel> class Measures {
public:
    explicit Measures(int size)
        : fSize(size), fNames(numberedNames("element_", size)), fOtherNames(numberedNames("changed_", size)) {}

    /// All but the memory. Files are left in the folder.
    void measureAll(std::string const & folder) {
        {
            auto const sample = makeSample<Metamodel>(fNames, SampleParts{.handles = true});
            measureGet(sample, "");
            measureReflection(sample);
            measureWalks(sample);
            measureWrites(sample, "");
            measureOneSet(sample);
            measureCopies(sample);
        }
        measureFiles(folder + "/plain.xmi", "", {});
        measureFiles(folder + "/linked.xmi", "_linked", SampleParts{.links = true});
        measureCreation();
    }

    /// What depends on where objects lie in memory, after ten models have come and gone.
    void measureLater() {
        for (int i = 0; i < 10; ++i) {
            static_cast<void>(makeRecordedSample<Metamodel>(fNames));
        }
        auto const sample = makeSample<Metamodel>(fNames, SampleParts{.handles = true});
        measureGet(sample, "_later");
        measureWrites(sample, "_later");
    }

    /// In a process that has made no model before, since memory that was given back would not be counted.
    static void measureBytes(int size) {
        double const before = residentBytes();
        auto const nameOf = [](int number) { return ZEL::String(numberedName("element_", number)); };
        auto const sample = SampleMaker<Metamodel, decltype(nameOf)>(size, {}, nameOf).make();
        sample.model.getRootDeviant().clearUndoStack();
        report("bytes", (residentBytes() - before) / size);
    }

private:
    using Made = Sample<Metamodel>;

    /// Reads from each object in turn; `read` returns whether there was a value.
    template <class Read> void measureEach(std::string const & name, Made const & sample, Read const & read) {
        measure(name, fSize, [&] {
            int found = 0;
            for (auto const & object : sample.objects) {
                found += static_cast<int>(read(object));
            }
            require(found == fSize, "found an object without a name");
        });
    }

    void measureGet(Made const & sample, std::string const & suffix) {
        measureEach("get" + suffix, sample, [](auto const & object) { return object.getName().size() != 0; });
        measureEach("get_view" + suffix, sample, [](auto const & object) { return !object.getNameView().empty(); });
    }

    void measureReflection(Made const & sample) {
        ZEL::String const name("name");
        ZEL::ImmutableProperty const property(sample.top.getMetaClass().getProperty(name));
        measureEach("get_by_property", sample, [&](auto const & object) { return object.getOne(property).isValid(); });
        measureEach("get_by_name", sample, [&](auto const & object) { return object.getOne(name).isValid(); });
        ZEL::PropertyView const & view = *ZEL::MetaClassView::ofInstance(sample.objects.front()).find("name");
        measureEach("read_by_property", sample, [&](auto const & object) { return !view.textOf(object).empty(); });
        measureEach("read_by_name", sample, [](auto const & object) {
            return !ZEL::MetaClassView::ofInstance(object).find("name")->textOf(object).empty();
        });
    }

    void measureWalks(Made const & sample) {
        measure("walk", fSize, [&] { require(contained(sample.top) == fSize, "lost objects on the way"); });
        measure("visit", fSize, [&] {
            ZEL::ImmutableAccessVisitorEmpty nothing;
            ZEL::ImmutableAccessVisitorTraversalContainment walk(&nothing, &nothing);
            require(walk.visitObject(sample.top), "the walk ended early");
        });
    }

    /// The number of objects in the tree, each met once.
    static int contained(ZEL::ImmutableClassObject const & top) {
        int met = 0;
        for (ZEL::ContentsWalk walk(top); !walk.isAtEnd(); walk.next()) {
            ++met;
        }
        return met;
    }

    void setNames(Made const & sample, Names const & names) {
        for (std::size_t i = 0; i < sample.objects.size(); ++i) {
            sample.objects[i].setName(names[i]);
        }
    }

    /// Gives each object the name that it does not have, in turn.
    void setOtherNames(Made const & sample) {
        bool const isFirst = sample.objects.front().getName() == fNames.front();
        setNames(sample, isFirst ? fOtherNames : fNames);
    }

    /// A set on every object in one transaction: the sets alone, then its undo and redo.
    void measureWrites(Made const & sample, std::string const & suffix) {
        auto const & model = sample.model;
        auto const begin = [&] { model.beginTransaction("set"); };
        auto const set = [&] { setOtherNames(sample); };
        auto const forget = [&] { model.getRootDeviant().clearUndoStack(); };
        auto const commitAndForget = [&] {
            model.commitTransaction();
            forget();
        };
        measure("set" + suffix, fSize, begin, set, commitAndForget);

        auto const undo = [&] { model.undo(); };
        auto const redo = [&] { model.redo(); };
        begin();
        set();
        model.commitTransaction();
        auto const last = sample.objects.back().getName();
        measure("undo" + suffix, fSize, {}, undo, redo);
        require(sample.objects.back().getName() == last, "the redo has not brought back what was undone");
        undo();
        require(sample.objects.back().getName() != last, "the undo has undone nothing");
        measure("redo" + suffix, fSize, {}, redo, undo);
        forget();
    }

    /// One set in a transaction of its own, its undo and its redo.
    void measureOneSet(Made const & sample) {
        constexpr int times = 5000;
        auto const & model = sample.model;
        auto const column = sample.columns[sample.columns.size() / 2];
        ZEL::String const names[] = {ZEL::String("x"), ZEL::String("y")};
        auto const setMany = [&] {
            for (int i = 0; i < times; ++i) {
                model.beginTransaction();
                column.setName(names[i % 2]);
                model.commitTransaction();
                model.undo();
                model.redo();
            }
        };
        measure("one_set", times, {}, setMany, [&] { model.getRootDeviant().clearUndoStack(); });
    }

    void measureCopies(Made const & sample) {
        typename Metamodel::Model target;
        ZEL::ImmutableObject copy;
        auto const begin = [&] {
            copy = ZEL::ImmutableObject();
            target = Metamodel::makeModel();
            target.beginTransaction("copy");
        };
        auto const clone = [&] { copy = sample.top.clone(target); };
        measure("copy", fSize, begin, clone, [&] { target.commitTransaction(); });
        measure("compare", fSize, [&] { require(ZEL::compare(sample.top, copy), "the copy is different"); });
    }

    void measureFiles(std::string const & path, std::string const & suffix, SampleParts const & parts) {
        {
            auto const sample = makeSample<Metamodel>(fNames, parts);
            measure("save" + suffix, fSize, [&] {
                require(ZEL::Serializer::XmiWriter().write(path, sample.model), "the file was not written");
            });
        }
        ZEL::Object read;
        auto const load = [&] { read = ZEL::Serializer::XmiReader().read(path); };
        auto const drop = [&] {
            require(read.isValid(), "the file was not read");
            read = ZEL::Object();
        };
        measure("load" + suffix, fSize, {}, load, drop);
    }

    void measureCreation() {
        std::optional<Made> sample;
        auto const create = [&] { sample.emplace(makeRecordedSample<Metamodel>(fNames)); };
        measure("create", fSize, {}, create, [&] { sample.reset(); });
    }

    int fSize;
    Names fNames;
    Names fOtherNames;
};

} // namespace peers
