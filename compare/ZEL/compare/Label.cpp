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
        ImmutableClassObject const container = at.getContainerZEL();
        at = ImmutableClassObject(); // a handle keeps its deviant when it gets the same body
        at = container;
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
    std::string label = MetaClassView::ofInstance(object).name();
    for (ImmutableClassObject at = object; at.isValid();) {
        if (std::string const name = qualifiedNameOf(at); !name.empty()) {
            return label + " '" + name + "'";
        }
        ImmutableClassObject const container = at.getContainerZEL();
        at = ImmutableClassObject();
        at = container;
        if (at.isValid()) {
            label += " in " + MetaClassView::ofInstance(at).name();
        }
    }
    return label;
}

} // namespace ZEL::Compare
