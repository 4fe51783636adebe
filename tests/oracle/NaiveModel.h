#pragma once

#include "Step.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

namespace ZEL::tests::oracle {

/// Everything that can be read from one object in one deviant.
struct State {
    Kind kind = Kind::Model;
    std::map<std::string, std::string> values;    ///< those that are set, as text
    std::map<std::string, std::vector<int>> ends; ///< of references and lists; all of them, empty if not set
    std::vector<std::string> body;
    int container = kNothing;

    friend bool operator==(State const &, State const &) = default;
};

struct ValueRule {
    std::string property;
    std::vector<std::string> choices; ///< what it is set to
    std::string initial;              ///< of a new object; empty if it is not set
    std::string unset;                ///< what it reads as when it is not set
    bool isKept;                      ///< even when it is set to what it reads as when it is not set
    bool isRequired;
};

/// How an end is kept in step with the rest of the model.
enum class Form {
    OneEnded,  ///< nothing else changes
    Contained, ///< the element gets the owner as its container
    Linked,    ///< the element refers back by the property `opposite`
    Riding     ///< is the element's container, if that is of the right kind; `opposite` is the container's list
};

struct EndRule {
    std::string property;
    bool isMany;
    Form form;
    std::set<Kind> accepts;
    std::string opposite;
};

/// The values of a kind of object, a text first.
std::vector<ValueRule> const & valuesOf(Kind kind);
/// The ends of a kind of object; those that contain come in the order in which a new element looks for its place.
std::vector<EndRule> const & endsOf(Kind kind);
EndRule const & endOf(Kind kind, std::string const & property);

/// A refused operation. The model is as it was before.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a deviant says of one object: nothing (it follows the root), that there is none, or its whole state.
struct Slot {
    enum Says { Nothing, Absent, Present };
    Says says = Nothing;
    State state{};
};
using Slots = std::map<int, Slot>;
Slot const & slotIn(Slots const & slots, int object);

/// Which objects a transaction or replay has created, deleted and modified.
struct Changes {
    std::set<int> created{};
    std::set<int> deleted{};
    std::set<int> modified{};

    friend bool operator==(Changes const &, Changes const &) = default;
};

enum class Role { Modifier, Validator, Observer, Leaver };
/// Those that a listener registers for. It leaves when its deviant is removed, once for each of them.
inline constexpr Role kRoles[] = {Role::Modifier, Role::Validator, Role::Observer};

/// A call of a listener.
struct Hearing {
    Role role;
    std::string deviant;
    int listener;
    Changes changes{};

    friend bool operator==(Hearing const &, Hearing const &) = default;
};

/// What listeners do. `before` is what the deviant said of the changed objects. A validator refuses by returning false.
using NaiveListeners = std::function<bool(Hearing const & hearing, Slots const & before)>;

struct Registration {
    int listener = 0;
    int number = 0; ///< another one when the listener comes again

    friend bool operator==(Registration const &, Registration const &) = default;
};

struct NaiveEntry {
    std::string name;
    int level = 0;
    Slots slots; ///< the states to which its objects go when it is run
};
using Entry = std::shared_ptr<NaiveEntry>; ///< who still looks at an entry keeps it

struct NaiveDeviant {
    std::string name;
    bool isRoot = false;
    Slots slots;
    int depth = 0;
    bool isWithin = false;
    std::string transactionName;
    int transactionLevel = 0;
    Slots saved; ///< full copies, from before the running transaction, of the objects it has touched
    int level = 1;
    int highestLevel = 1;
    std::deque<Entry> stack;
    int position = 0;
    int maximum = 1;
    std::map<Role, std::vector<Registration>> listeners;
    int preparations = 0;             ///< how often listeners have been told what to hear next
    std::function<void()> unfinished; ///< what remains to be done of the step whose observers are running
};

/// The kernel's rules of deviants, transactions, history and both-ended properties, told with maps of whole states.
/// It is meant to be checked by reading; nothing in it is fast.
class NaiveModel {
public:
    explicit NaiveModel(NaiveListeners listeners);

    // --- looking ------------------------------------------------------------------------------------------------------
    [[nodiscard]] NaiveDeviant const & deviant(std::string const & name) const { return fDeviants.at(name); }
    [[nodiscard]] std::map<std::string, NaiveDeviant> const & deviants() const { return fDeviants; }
    [[nodiscard]] int numberOfObjects() const { return static_cast<int>(fKinds.size()); }
    [[nodiscard]] Kind kindOf(int object) const { return fKinds.at(static_cast<std::size_t>(object)); }
    [[nodiscard]] bool isValid(std::string const & deviant, int object) const;
    [[nodiscard]] State const & read(std::string const & deviant, int object) const;
    /// The state as a client sees it, with the ends that ride on the container; nothing if the object is absent.
    [[nodiscard]] std::optional<State> observed(std::string const & deviant, int object) const;
    /// The objects of which the deviant says something else than the root.
    [[nodiscard]] std::set<int> deviating(std::string const & deviant) const;
    /// The object and all that it contains, owners first.
    [[nodiscard]] std::vector<int> subtree(std::string const & deviant, int object) const;
    /// The containers of the object, nearest first; ends at one that is absent or comes twice.
    [[nodiscard]] std::vector<int> owners(std::string const & deviant, int object) const;

    // --- operations ---------------------------------------------------------------------------------------------------
    struct Operation {
        bool isOnObject; ///< and not on a deviant
        void (NaiveModel::*perform)(Step const & s);
    };
    static std::map<std::string, Operation> const & operations();
    static bool isOnObject(Step const & s) { return !s.what.empty() && operations().at(s.what).isOnObject; }
    void perform(Step const & s) { (this->*operations().at(s.what).perform)(s); }

private:
    // --- objects ------------------------------------------------------------------------------------------------------
    void create(Step const & s);
    void setValue(Step const & s);
    void removeValue(Step const & s);
    void setReference(Step const & s);
    void removeReference(Step const & s);
    void link(Step const & s);
    void unlink(Step const & s);
    void addBody(Step const & s);
    void eraseBody(Step const & s);
    void setContainer(Step const & s);
    void removeContainer(Step const & s);
    void destroy(Step const & s);

    // --- deviants and history -------------------------------------------------------------------------------------------
    void begin(Step const & s);
    void commit(Step const & s);
    void cancel(Step const & s);
    void replay(Step const & s); ///< undo and redo
    void replayToLevel(Step const & s);
    void setMaximum(Step const & s);
    void disableUndo(Step const & s);
    void clearUndo(Step const & s);
    void clearRedo(Step const & s);
    void sync(Step const & s);
    void assign(Step const & s);
    void createDeviant(Step const & s);
    void removeDeviant(Step const & s);
    void listen(Step const & s);
    void unlisten(Step const & s);
    void replaceForeign(Step const &) {} // nothing is known of other models

    [[nodiscard]] NaiveDeviant & at(std::string const & name) { return fDeviants.at(name); }
    [[nodiscard]] Slot const & committedInRoot(int object) const;
    [[nodiscard]] Slot const & seen(std::string const & deviant, int object) const;
    [[nodiscard]] State const & read(Step const & s) const { return read(s.deviant, s.object); }
    State & write(std::string const & deviant, int object);
    State & write(Step const & s) { return write(s.deviant, s.object); }
    void checkOpen(std::string const & deviant);

    /// Changes one end alone: a list gets the value unless it has it, a single reference is set to it.
    void addTo(std::string const & deviant, int object, std::string const & property, int value);
    void eraseFrom(std::string const & deviant, int object, std::string const & property, int value);
    void eraseContainee(std::string const & deviant, int container, int object);
    /// Takes the object from where it stands and sets its container, in no list yet.
    void moveOnly(std::string const & deviant, int object, int container);
    void unparentOnly(std::string const & deviant, int object);

    void isolateOthers(Slots const & old);
    [[nodiscard]] static Changes changes(Slots const & before, NaiveDeviant const & after);
    [[nodiscard]] static bool isStillCommitting(NaiveDeviant & deviant);
    static void push(NaiveDeviant & deviant, Entry const & entry);
    static void trim(NaiveDeviant & deviant);
    static void finish(NaiveDeviant & deviant);
    static void save(NaiveDeviant & deviant, int object, Slot const & slot);
    /// What the listeners of a role will hear.
    static Changes prepare(NaiveDeviant & deviant, Role role, Slots const & before);
    /// Calls `call(listener)` for those that are registered now, as long as they are and it returns true.
    template <class Call> bool callAll(std::string const & deviant, Role role, Call call);
    /// Whether all who take part in the commit agree.
    bool askAll(NaiveDeviant & deviant, Role role);
    void observe(NaiveDeviant & deviant, Changes changes, Entry const & entry);
    void requireIdle(std::string const & operation) const;

    NaiveListeners fListeners;
    std::map<std::string, NaiveDeviant> fDeviants; ///< in the order of their names
    std::vector<Kind> fKinds;
    int fRegistrations = 0;
};

} // namespace ZEL::tests::oracle
