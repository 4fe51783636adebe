#pragma once

#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/tools/HTMLPrinter.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace ZEL {

class SingleValuedPropertyManager;

namespace internal {
class BodyCore;
class FieldValue;
class StateCore;
} // namespace internal

namespace util {

/// The objects of one page for a printer that overrides nothing, or `markupOf` alone.
///
/// What types and properties contribute to the page is made into markup once, links to the objects met last are kept,
/// and the page goes to the printer's stream in large pieces. For the time of one print, in which the model does not
/// change. What cannot be read the quick way is left to the printer's own operations, which know how to say why.
class HTMLQuickPage {
public:
    /// The printer stays the caller's.
    explicit HTMLQuickPage(HTMLPrinter & printer);
    ~HTMLQuickPage();
    HTMLQuickPage(HTMLQuickPage const &) = delete;
    HTMLQuickPage & operator=(HTMLQuickPage const &) = delete;

    /// The object and all it contains, as far as possible: after a failure what was made until then is in the stream.
    void print(ImmutableClassObject const & element);

private:
    /// An object of the metamodel, in the deviant in which it is asked.
    struct Key {
        NSInterface::ObjectIntf const * body = nullptr;
        Deviant deviant;

        friend bool operator==(Key const & left, Key const & right) noexcept {
            return left.body == right.body && left.deviant == right.deviant;
        }
    };
    struct HashOfKey {
        std::size_t operator()(Key const & key) const noexcept {
            return std::hash<NSInterface::ObjectIntf const *>()(key.body);
        }
    };

    /// A type of values.
    struct TypeMarkup {
        std::string name;
        std::string beforeValue; ///< up to the text of a boxed value
        std::string beforeLink;  ///< up to the link to an object
    };
    /// A property of a class.
    struct Row {
        internal::PropertyView const * property;
        SingleValuedPropertyManager const * single; ///< its storage; null if that is of another kind
        std::string empty;                          ///< the whole row of an object without a value
        std::string beforeValues;
        TypeMarkup const * type = nullptr; ///< of stored values of a data type, once one was met
        std::vector<std::string> literals; ///< their texts by number; empty for those not met yet
    };
    struct ClassMarkup {
        std::shared_ptr<internal::MetaClassView const> view; ///< on which the rest stands
        std::vector<Row> rows;
        SingleValuedPropertyManager const * name; ///< storage of the name; null if it is of another kind
    };
    /// What is known of the objects met last, each in the place that its address tells.
    template <class Thing> class LastMet {
    public:
        /// Of the object; what `make` returns if that is not kept.
        template <class Make> Thing const & get(Key const & key, Make make) {
            Place & place = fPlaces[indexOf(key)];
            if (key.body == nullptr || !(place.key == key)) {
                place.key = Key(); // while there is no thing
                place.thing = make();
                place.key = key;
            }
            return place.thing;
        }

    private:
        struct Place {
            Key key;
            Thing thing = Thing();
        };

        static constexpr int kBits = 6;

        /// The upper bits of the product depend on all bits of the address.
        [[nodiscard]] static std::size_t indexOf(Key const & key) noexcept {
            return reinterpret_cast<std::uintptr_t>(key.body) * std::uint64_t(0x9E3779B97F4A7C15) >> (64 - kBits);
        }

        std::array<Place, std::size_t(1) << kBits> fPlaces;
    };

    /// The object that is printed now.
    struct Present {
        ImmutableClassObject const & object;
        internal::StateCore const * state; ///< null if its values are reached by the storages of its properties alone
    };
    /// A value, or an object that is one, without a count.
    struct Seen {
        NSInterface::ObjectIntf const * object;
        Deviant deviant;

        [[nodiscard]] ImmutableObject handle() const { return ImmutableObject(object, deviant); }
    };

    void printObject(ImmutableClassObject const & object);
    void printRow(Present const & present, Row & row);
    /// False if the values are not to be found in the object's state; nothing is written then.
    [[nodiscard]] bool printStored(Present const & present, Row & row);
    void printStoredLinks(Present const & present, Row const & row);
    void printStoredValue(Present const & present, Row & row);
    /// Of a value that is set.
    [[nodiscard]] std::string textOf(internal::FieldValue const & value, Present const & present, Row & row);
    void printValue(Seen const & value, bool isContained);
    /// False if the value is not of the usual kinds.
    [[nodiscard]] bool printUsual(Seen const & value, bool isContained);
    /// Reads the values into `fValues`. Why they cannot be read, if so.
    [[nodiscard]] std::optional<std::string> read(ImmutableClassObject const & object, Row const & row);

    [[nodiscard]] TypeMarkup const & typeOf(Seen const & value);
    [[nodiscard]] TypeMarkup const & typeOf(Key const & type, Seen const & value);
    [[nodiscard]] ClassMarkup & classOf(ImmutableClassObject const & object);
    [[nodiscard]] ClassMarkup & markupOf(ImmutableClass const & metaClass, Key const & key);
    [[nodiscard]] Row rowOf(internal::PropertyView const & property) const;
    [[nodiscard]] std::string nameOf(ImmutableClassObject const & object);
    [[nodiscard]] std::string const & linkTo(internal::BodyCore const & object, Deviant deviant);

    void put();
    void putIfLarge();

    HTMLPrinter & fPrinter;
    std::string fText; ///< of the page, not yet in the stream
    std::vector<ImmutableObject> fValues;
    std::vector<ImmutableClassObject> fToPrint; ///< what is still to come, the last one first
    std::vector<ImmutableClassObject> fChildren;
    std::unordered_map<Key, TypeMarkup, HashOfKey> fTypes;
    std::unordered_map<Key, ClassMarkup, HashOfKey> fClasses;
    LastMet<TypeMarkup const *> fLastTypes;
    LastMet<ClassMarkup *> fLastClasses;
    LastMet<std::string> fLastLinks;
    // What is the same in all rows.
    std::string fAfterValues;
    std::string fAfterValue;
};

} // namespace util
} // namespace ZEL
