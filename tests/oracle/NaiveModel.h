#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ZEL::oracle {

enum class Kind { Model, Package, Class, Property, Association, Constraint, Expression, Operation, Comment };

constexpr int kNothing = -1; ///< no object
constexpr int kModel = 0;    ///< the number of the model itself
/// Objects of another model have numbers from here on. They are referred to by ends that nothing else hangs on, and
/// never looked at.
constexpr int kFirstForeign = 1'000'000;

/// Everything that can be read from one object in one deviant. What is not set has no entry.
struct State {
    Kind kind = Kind::Model;
    std::map<std::string, bool> flags;
    std::map<std::string, std::string> texts;
    std::map<std::string, long long> numbers;
    std::map<std::string, int> references;
    std::map<std::string, std::vector<int>> lists;
    std::vector<std::string> body;
    int container = kNothing;

    friend bool operator==(State const &, State const &) = default;
};

/// How a property is kept in step with the rest of the model.
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

/// The ends of a kind of object; those that contain come in the order in which a new element looks for its place.
std::vector<EndRule> const & endsOf(Kind kind);
EndRule const & endOf(Kind kind, std::string const & property);
std::vector<std::string> const & flagsOf(Kind kind);
std::vector<std::string> const & textsOf(Kind kind);
std::vector<std::string> const & numbersOf(Kind kind);

/// A refused operation. The model is as it was before.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a listener of the script throws, on both sides.
class ListenerFailure : public std::runtime_error {
public:
    ListenerFailure() : std::runtime_error("listener failure") {}
};

/// Which objects a transaction or replay has created, deleted and modified.
struct Changes {
    std::set<int> created;
    std::set<int> deleted;
    std::set<int> modified;

    friend bool operator==(Changes const &, Changes const &) = default;
};

/// What a deviant says of one object: nothing (it follows the root), that there is none, or its whole state.
struct Slot {
    enum Says { Nothing, Absent, Present };
    Says says = Nothing;
    State state;
};
using Slots = std::map<int, Slot>;

enum class Role { Modifier, Validator, Observer };
inline constexpr Role kRoles[] = {Role::Modifier, Role::Validator, Role::Observer};

/// Takes part in the commits of the deviants that it listens to. `before` is what the deviant said of the changed objects.
class NaiveListener {
public:
    virtual ~NaiveListener() = default;
    virtual void modify(std::string const & deviant, int listener, Changes const & changes, Slots const & before) = 0;
    virtual bool validate(std::string const & deviant, int listener, Changes const & changes, Slots const & before) = 0;
    virtual void observe(std::string const & deviant, int listener, Changes const & changes, Slots const & before) = 0;
    /// The deviant is being removed; once for each role.
    virtual void leave(std::string const & deviant, int listener) = 0;
};

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

inline char const * const kRoot = "root deviant";

/// The kernel's rules of deviants, transactions, history and both-ended properties, told with maps of whole states.
/// It is meant to be checked by reading; nothing in it is fast.
class NaiveModel {
public:
    explicit NaiveModel(NaiveListener & listener);

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

    // --- objects ------------------------------------------------------------------------------------------------------
    int create(std::string const & deviant, Kind kind);
    void setFlag(std::string const & deviant, int object, std::string const & property, bool value);
    void setText(std::string const & deviant, int object, std::string const & property, std::string const & value);
    void removeText(std::string const & deviant, int object, std::string const & property);
    void setNumber(std::string const & deviant, int object, std::string const & property, long long value);
    void removeNumber(std::string const & deviant, int object, std::string const & property);
    void setReference(std::string const & deviant, int object, std::string const & property, int value);
    void removeReference(std::string const & deviant, int object, std::string const & property);
    void link(std::string const & deviant, int object, std::string const & property, int value, bool atFront);
    void unlink(std::string const & deviant, int object, std::string const & property, int index);
    void addBody(std::string const & deviant, int object, int index, std::string const & text);
    void eraseBody(std::string const & deviant, int object, int index);
    void setContainer(std::string const & deviant, int object, int container);
    void removeContainer(std::string const & deviant, int object);
    void destroy(std::string const & deviant, int object);

    // --- deviants and history -------------------------------------------------------------------------------------------
    void createDeviant(std::string const & name);
    void removeDeviant(std::string const & name);
    void listen(std::string const & deviant, int listener, Role role);
    void unlisten(std::string const & deviant, int listener, Role role);
    void begin(std::string const & deviant, std::string const & name);
    void commit(std::string const & deviant);
    void cancel(std::string const & deviant);
    void undo();
    void redo();
    void undoToLevel(int level);
    void redoToLevel(int level);
    void setMaximum(int length);
    void disableUndo(std::string const & deviant);
    void clearUndo(std::string const & deviant);
    void clearRedo(std::string const & deviant);
    void sync(std::string const & deviant);
    void assign(std::string const & deviant);

private:
    [[nodiscard]] NaiveDeviant & at(std::string const & name) { return fDeviants.at(name); }
    [[nodiscard]] Slot slotIn(NaiveDeviant const & deviant, int object) const;
    [[nodiscard]] Slot committedInRoot(int object) const;
    void checkOpen(std::string const & deviant);
    State & write(std::string const & deviant, int object);

    void addUnparented(std::string const & deviant, int object);
    void eraseUnparented(std::string const & deviant, int object);
    void eraseContainee(std::string const & deviant, int container, int object);
    /// Takes the object from where it stands and gives it the container, in no list yet.
    void moveOnly(std::string const & deviant, int object, int container);
    void unparentOnly(std::string const & deviant, int object);
    void addOpposite(std::string const & deviant, int object, std::string const & property, int value);
    void eraseOpposite(std::string const & deviant, int object, std::string const & property, int value);

    void isolateOthers(Slots const & old);
    [[nodiscard]] Changes changes(Slots const & before, NaiveDeviant const & after) const;
    [[nodiscard]] static bool isStillCommitting(NaiveDeviant & deviant);
    void push(NaiveDeviant & deviant, Entry const & entry);
    static void trim(NaiveDeviant & deviant);
    static void finish(NaiveDeviant & deviant);
    static void save(NaiveDeviant & deviant, int object, Slot const & slot);
    /// What the listeners of a role will hear.
    Changes prepare(NaiveDeviant & deviant, Role role, Slots const & before);
    /// Calls `call(listener)` for those that are registered now, as long as they are and it gives true.
    template <class Call> bool callAll(std::string const & deviant, Role role, Call call);
    void observe(NaiveDeviant & deviant, Changes changes, Entry const & entry);
    void run(NaiveDeviant & root, bool isUndo);
    void requireIdle(char const * operation) const;

    NaiveListener & fListener;
    std::map<std::string, NaiveDeviant> fDeviants; ///< in the order of their names
    std::vector<Kind> fKinds;
    int fRegistrations = 0;
};

} // namespace ZEL::oracle
