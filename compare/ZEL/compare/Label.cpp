#include <ZEL/compare/Label.h>
#include <ZEL/metamodel/MetaClassView.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace ZEL::Compare {
namespace {

/// Valid until the object is next changed.
std::string_view nameIn(MetaClassView const & view, ImmutableClassObject const & object) {
    PropertyView const * const name = view.find(PropertyView::Role::Name);
    return name == nullptr || name->value == nullptr ? std::string_view() : name->textOf(object);
}

} // namespace

std::string nameOf(ImmutableClassObject const & object) {
    return std::string(nameIn(MetaClassView::ofInstance(object), object));
}

std::string qualifiedNameOf(ImmutableClassObject const & object) {
    std::vector<std::string> names;
    for (ImmutableClassObject at = object; at.isValid();) {
        MetaClassView const & view = MetaClassView::ofInstance(at);
        std::string name(nameIn(view, at));
        bool const isObject = names.empty() && at == object;
        if (isObject && name.empty()) {
            return name;
        }
        if (!name.empty() && (isObject || !view.isModel())) {
            names.push_back(std::move(name));
        }
        at = ImmutableClassObject(at.getContainerZEL());
    }
    std::string joined;
    std::for_each(names.rbegin(), names.rend(),
                  [&joined](std::string const & name) { joined += joined.empty() ? name : "." + name; });
    return joined;
}

std::string labelOf(ImmutableClassObject const & object) {
    if (!object.isValid()) {
        return "nothing";
    }
    std::string const label = MetaClassView::ofInstance(object).name();
    if (std::string const name = qualifiedNameOf(object); !name.empty()) {
        return label + " '" + name + "'";
    }
    // The nearest one around it that has a name, or else the outermost.
    ImmutableClassObject around = object;
    for (ImmutableClassObject next = object.getContainerZEL(); next.isValid();) {
        around = next;
        bool const isNamed = !nameIn(MetaClassView::ofInstance(around), around).empty();
        next = isNamed ? ImmutableClassObject() : around.getContainerZEL();
    }
    std::string const name = qualifiedNameOf(around);
    return around == object
               ? label
               : label + " in " + MetaClassView::ofInstance(around).name() + (name.empty() ? "" : " '" + name + "'");
}

} // namespace ZEL::Compare
