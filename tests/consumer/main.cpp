#include <ZEL/Double.h>
#include <ZEL/serializer/XmiReader.h>
#include <ZEL/serializer/XmiWriter.h>
#include <ZEL/tools/Comparator.h>

#include <recipes/Cookbook.h>
#include <recipes/CookbookFactory.h>
#include <recipes/Ingredient.h>
#include <recipes/MetaModelRegistration.h>
#include <recipes/Recipe.h>
#include <recipes/Unit.h>

#include <exception>
#include <iostream>
#include <string>

int run(std::string const & folder) {
    recipes::registerMetaModel();
    recipes::Cookbook const cookbook = recipes::CookbookFactory::createNewModel();
    recipes::CookbookFactory const factory(cookbook.getFactory());

    cookbook.beginTransaction("a first recipe");
    recipes::Recipe const recipe = factory.createRecipe();
    recipe.setName("pancakes");
    cookbook.getRecipes().push_back(recipe);
    recipes::Ingredient const milk = factory.createIngredient();
    milk.setName("milk");
    milk.setAmount(ZEL::Double(0.5));
    milk.setUnit(recipes::Unit::Litre);
    milk.setRecipe(recipe); // and milk is the last of recipe.getIngredients()
    cookbook.commitTransaction();

    std::string const file = folder + "/cookbook.xmi";
    if (!ZEL::Serializer::XmiWriter().write(file, cookbook)) {
        return 1;
    }
    recipes::Cookbook const again(ZEL::Serializer::XmiReader().read(file));
    for (recipes::Ingredient const & ingredient : again.getRecipes().at(0).getIngredients()) {
        std::cout << ingredient.getRecipe().getName().str() << ": " << ingredient.getAmount().toString().str() << ' '
                  << ingredient.getUnit().toString().str() << ' ' << ingredient.getName().str() << '\n';
    }
    return ZEL::compare(cookbook, again) ? 0 : 1;
}

int main(int argc, char ** argv) {
    try {
        return run(argc > 1 ? argv[1] : ".");
    } catch (std::exception const & exception) {
        std::cerr << exception.what() << '\n';
        return 1;
    }
}
