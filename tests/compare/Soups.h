#pragma once

#include <ZEL/ZEL.h>
#include <ZEL/compare/Check.h>

#include <gmock/gmock.h>
#include <kitchen/Ingredient.h>
#include <kitchen/Kitchen.h>
#include <kitchen/Menu.h>
#include <kitchen/Roast.h>
#include <kitchen/Soup.h>

#include <string>
#include <vector>

namespace ZEL::Compare::tests {

/// The diagnostics as lines.
[[nodiscard]] std::vector<std::string> linesOf(Diagnostics const & diagnostics);

/// A menu with one soup that is as it should be, in an open transaction.
class Soups : public testing::Test {
protected:
    Soups();
    ~Soups() override;

    [[nodiscard]] kitchen::Soup makeSoup(std::string const & name) const;
    [[nodiscard]] kitchen::Ingredient makeIngredient(std::string const & name) const;
    [[nodiscard]] std::vector<std::string> lines(Rules const & rules = Rules::ofMetamodels()) const {
        return linesOf(check(menu, rules));
    }

    kitchen::Menu menu;
    kitchen::Kitchen factory;
    kitchen::Soup leek;
    kitchen::Ingredient salt;
};

} // namespace ZEL::Compare::tests
