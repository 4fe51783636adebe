#pragma once

#include <ZEL/Export.h>

#include <string>
#include <vector>

namespace ZEL {

class ClassObject;
class ImmutableClassObject;

/// What a file holds in an object's element and no property of the object can hold: kept as it stood, so that it is
/// there when the object is written again.
///
/// It belongs to the state of its object: transactions, undo, redo and variants of the state treat it as they treat
/// values, copies of the object have it too, and it goes with the object. Objects without any take no memory for it.
struct ZEL_API Remainder {
    /// Whether something belongs to the object's own element, or beside it: to the root of the file. Only what a model
    /// keeps can stand there.
    enum class Place { Inside, Beside };
    /// Where the object's own element stands: within that of its container, as most do; at the top of the file, beside
    /// the model that contains the object; or nowhere, being that of a model made to hold what stands at the top.
    enum class Standing { Within, AtTop, Nowhere };

    struct Attribute {
        std::string uri;    ///< of its namespace; empty for none
        std::string prefix; ///< that the file has for the namespace; empty for none
        std::string name;
        std::string value;
        Place place = Place::Inside;
    };
    /// A link whose target was not found, or that its property did not take.
    struct Link {
        std::string property;
        std::string target;  ///< an id in the same file, or a URI with a fragment
        std::string typeUri; ///< this and the next: the class of the target, as far as the file names it
        std::string typeName;
        std::string content;      ///< elements in the link's own element, as text; empty for none
        std::string typePrefix{}; ///< that the file has for `typeUri`; empty for a registered namespace
    };
    struct Element {
        std::string xml; ///< of the whole element, in UTF-8; it declares the prefixes that it uses, except "xmi"
        Place place = Place::Inside;
        /// The link in whose element it stands, as long as that has an element; empty for none.
        std::string property{};
        std::string target{}; ///< of that link, as far as it follows the sign '#'
    };

    std::vector<Attribute> attributes;
    std::vector<Link> links;
    std::vector<Element> elements;
    Standing standing = Standing::Within;
    /// The class that the file names, if the object cannot be of that, as a model within a model cannot; else empty.
    std::string typeUri{};
    std::string typeName{};

    [[nodiscard]] bool empty() const noexcept {
        return attributes.empty() && links.empty() && elements.empty() && standing == Standing::Within &&
               typeName.empty();
    }
};

/// What is kept of the object; empty for most. Valid until the object is next changed.
[[nodiscard]] ZEL_API Remainder const & remainderOf(ImmutableClassObject const & object);
/// Replaces it; an empty one removes it. A change of the object as any other: throws where a value could not be set, such
/// as outside of a transaction.
ZEL_API void setRemainder(ClassObject const & object, Remainder remainder);

} // namespace ZEL
