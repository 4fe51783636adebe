#include "Json.h"

#include <ZEL/String.h>
#include <ZEL/compare/Label.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/serializer/ObjectId.h>

#include <nlohmann/json.hpp>

#include <iostream>

namespace cli {

Json jsonOf(ZEL::ImmutableClassObject const & object) {
    if (!object.isValid()) {
        return nullptr;
    }
    return {{"class", object.getMetaClass().getQualifiedName().str()},
            {"name", ZEL::Compare::qualifiedNameOf(object)},
            {"id", ZEL::ObjectId::of(object)}};
}

void print(Json const & json) { std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n'; }

} // namespace cli
