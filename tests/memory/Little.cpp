// Works on a model until there is no memory, and says so in one line.

#include <ZEL/ZEL.h>

#include <cstdio>
#include <exception>

int main() {
    try {
        ZEL::MetaModel const model = ZEL::Factory::createNewModel();
        ZEL::Factory const factory = model.getFactoryFactory();
        model.beginTransaction();
        for (int i = 0; i < 20'000; ++i) {
            factory.createClass().setName("a class with a name of some length");
        }
        model.commitTransaction();
        return 0;
    } catch (std::exception const &) {
        std::fputs("out of memory\n", stderr);
        return 2;
    }
}
