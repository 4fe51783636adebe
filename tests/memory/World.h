#pragma once

#include <ZEL/ZEL.h>

#include <string>

namespace ZEL::tests::memory {

/// A small model with a bit of everything: parts, links, texts, values, two deviants beside the root of which one is
/// within a transaction, a history to undo and to redo, and a listener in all roles.
class World {
public:
    World();
    ~World();
    World(World const &) = delete;
    World & operator=(World const &) = delete;

    /// All that exists in the root and in the deviants: each object by number with its class and stored values.
    [[nodiscard]] std::string picture() const;
    /// What a caller does next, with memory: goes through the history and back, and works. Returns what went wrong.
    [[nodiscard]] std::string useOn();
    /// Changes of all kinds in the deviant of `view`, which must be open.
    void change(MetaModel const & view) const;
    /// Gives the model up, and all that holds it.
    void drop();

    MetaModel model;
    MetaModel draft; ///< has changes of its own
    MetaModel other; ///< has an open transaction
    Factory factory;
    Package package;
    Class first;

private:
    struct Counter : ListenerBase {
        void modifyOnCommit(ReportOfChanges<ClassObject, FALSE_TYPE> const & report) { add(report); }
        bool validateOnCommit(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
            add(report);
            return true;
        }
        void observeChanges(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) { add(report); }
        template <class Report> void add(Report const & report) { count += report.modified.size(); }

        int count = 0;
    };

    void fill();

    Counter fCounter;
};

} // namespace ZEL::tests::memory
