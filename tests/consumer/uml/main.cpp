// A class and the verdict on it, saved in the folder that is given, read again and printed.

#include <ZEL/ZEL.h>

#include <reviews/MetaModelRegistration.h>
#include <reviews/Reviewed.h>
#include <reviews/ReviewsFactory.h>
#include <reviews/Verdict.h>
#include <uml/Class.h>
#include <uml/Model.h>
#include <uml/UmlFactory.h>

#include <iostream>
#include <string>

namespace {

uml::Model makeModel() {
    uml::Model const model = uml::UmlFactory::createNewModel();
    model.beginTransaction("a class and its review");
    uml::Class const order = uml::UmlFactory(model.getFactory()).createClass();
    order.setName("Order");
    model.getPackagedElements().push_back(order);
    reviews::Reviewed const review = reviews::ReviewsFactory::createNewFactory(model).createReviewed();
    review.setBase_Class(order);
    review.setVerdict(reviews::Verdict::Accepted);
    model.commitTransaction();
    return model;
}

} // namespace

int main(int argc, char ** argv) {
    reviews::registerMetaModel(); // and uml, which it builds on
    std::string const file = std::string(argc > 1 ? argv[1] : ".") + "/reviews.xmi";
    uml::Model const model = makeModel();
    if (!ZEL::Serializer::XmiWriter().write(file, model)) {
        return 1;
    }
    uml::Model const again(ZEL::Serializer::XmiReader().read(file));
    if (!ZEL::compare(model, again)) {
        std::cerr << file << ": not what was saved\n";
        return 1;
    }
    uml::Class const order(again.getPackagedElements().at(0));
    reviews::Reviewed const review(order.getAppliedStereotypeInstances().at(0));
    std::cout << order.getName().str() << ": " << review.getVerdict().toString() << '\n';
    return 0;
}
