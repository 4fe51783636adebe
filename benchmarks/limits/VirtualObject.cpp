#include "limits/VirtualObject.h"

namespace ZEL::bench {

namespace {

struct Values {
    std::string name;
    VirtualObject * type = nullptr;
    int number = 0;
    bool flag = false;
};

class Object final : public VirtualObject {
public:
    Object(std::size_t number, VirtualObject * type) {
        fValues->name = "attribute" + std::to_string(number);
        fValues->type = type;
        fValues->number = static_cast<int>(number);
        fValues->flag = number % 2 == 0;
    }

    [[nodiscard]] bool const & flag() const override { return fValues->flag; }
    [[nodiscard]] int const & number() const override { return fValues->number; }
    [[nodiscard]] VirtualObject * const & type() const override { return fValues->type; }
    [[nodiscard]] std::string nameByValue() const override { return fValues->name; }
    void setFlag(bool value) override {
        if (fValues->flag != value) {
            fValues->flag = value;
        }
    }
    void setName(std::string const & value) override {
        if (fValues->name != value) {
            fValues->name = value;
        }
    }

private:
    std::unique_ptr<Values> fValues = std::make_unique<Values>();
};

} // namespace

std::vector<std::unique_ptr<VirtualObject>> makeVirtualObjects(std::size_t count) {
    std::vector<std::unique_ptr<VirtualObject>> objects;
    objects.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        objects.push_back(std::make_unique<Object>(i, objects.empty() ? nullptr : objects.back().get()));
    }
    return objects;
}

} // namespace ZEL::bench
