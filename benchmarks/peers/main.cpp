#include "Measures.h"

#include <ZEL/logging/Logger.h>

#include <lean/MetaModelRegistration.h>

#include <cstdlib>
#include <exception>
#include <iostream>

namespace peers {

namespace {

constexpr char kUsage[] = "usage: zel-peer built-in|lean all SIZE FOLDER | later SIZE | bytes SIZE | load FILE\n";

/// Reads the file and ends: the work of a whole process.
bool isLoaded(std::string const & path) { return ZEL::Serializer::XmiReader().read(path).isValid(); }

template <class Metamodel> bool run(std::vector<std::string> const & arguments) {
    std::string const & mode = arguments[1];
    if (mode == "load") {
        return isLoaded(arguments[2]);
    }
    int const size = std::atoi(arguments[2].c_str());
    if (mode == "bytes") {
        Measures<Metamodel>::measureBytes(size);
    } else if (mode == "later") {
        Measures<Metamodel>(size).measureLater();
    } else {
        Measures<Metamodel>(size).measureAll(arguments.at(3));
    }
    return true;
}

} // namespace

} // namespace peers

int main(int count, char ** texts) {
    std::vector<std::string> const arguments(texts + 1, texts + count);
    if (arguments.size() < 3) {
        std::cerr << peers::kUsage;
        return 2;
    }
    try {
        lean::registerMetaModel();
        ZEL::Logger::instance()->setLevel(ZEL::LogLevel::off);
        bool const isDone = arguments[0] == "lean" ? peers::run<peers::LeanMetamodel>(arguments)
                                                   : peers::run<peers::BuiltInMetamodel>(arguments);
        return isDone ? 0 : 1;
    } catch (std::exception const & exception) {
        std::cerr << exception.what() << '\n';
        return 1;
    }
}
