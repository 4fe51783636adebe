#include "Soups.h"

#include <kitchen/DishIntf.h>
#include <kitchen/MetaModelRegistration.h>
#include <kitchen/SoupIntf.h>

#include <algorithm>
#include <iterator>

namespace kitchen::NSInterface {

bool DishIntf::satisfiesNamed(ZEL::Deviant deviant) const { return !getName(deviant).empty(); }

bool DishIntf::satisfiesModest(ZEL::Deviant deviant) const {
    return static_cast<std::int32_t>(getServes(deviant)) <= 10;
}

bool SoupIntf::satisfiesModest(ZEL::Deviant deviant) const {
    return static_cast<std::int32_t>(getServes(deviant)) <= 100;
}

} // namespace kitchen::NSInterface

namespace ZEL::Compare::tests {

std::vector<std::string> linesOf(Diagnostics const & diagnostics) {
    std::vector<std::string> lines;
    std::transform(diagnostics.begin(), diagnostics.end(), std::back_inserter(lines), lineOf);
    return lines;
}

Soups::Soups() {
    kitchen::registerMetaModel();
    menu = kitchen::Kitchen::createNewModel();
    factory = kitchen::Kitchen(menu.getFactory());
    menu.beginTransaction("a menu");
    leek = makeSoup("leek");
    salt = makeIngredient("salt");
    leek.getIngredients().push_back(salt);
}

Soups::~Soups() {
    if (menu.getDeviant().isWithinTransaction()) {
        menu.cancelTransaction();
    }
}

kitchen::Soup Soups::makeSoup(std::string const & name) const {
    kitchen::Soup const soup = factory.createSoup();
    soup.setName(name);
    soup.setCook("Ada");
    menu.getMeals().push_back(soup);
    return soup;
}

kitchen::Ingredient Soups::makeIngredient(std::string const & name) const {
    kitchen::Ingredient const ingredient = factory.createIngredient();
    ingredient.setName(name);
    return ingredient;
}

} // namespace ZEL::Compare::tests
