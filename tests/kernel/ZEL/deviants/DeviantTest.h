#pragma once

#include "support/ExpectRaises.h"
#include "support/TestObjects.h"

#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/deviants/StateMap.h>
#include <ZEL/metamodel/DeviantManagerHelper.h>

namespace ZEL::tests {

/// An object that is 1 in the root, whose history is empty, and a second deviant, `a`.
struct TwoDeviants : DeviantFixture {
    explicit TwoDeviants(Kind kind) : DeviantFixture(kind) { root.clearUndoStack(); }
    ~TwoDeviants() override { DeviantAssertions::enableAssertions(true); }

    /// The values that the root and `a` have of the object: "1 2"; "-" where it is absent.
    [[nodiscard]] std::string seen(Subject object) const {
        auto const valueIn = [&](Deviant deviant) {
            return object->deviant_isValid(deviant) ? std::to_string(object.valueIn(deviant)) : "-";
        };
        return valueIn(root) + ' ' + valueIn(a);
    }
    /// The entries of the root's history with their levels, around the current level: "A2 B3 |4| C5".
    [[nodiscard]] std::string history() const {
        std::string text;
        for (int i = root.getUndoStackLength() - 1; i >= 0; --i) {
            text += root.getUndoNameAt(i) + std::to_string(root.getUndoChangeLevelAt(i)) + ' ';
        }
        text += '|' + std::to_string(root.getCurrentChangeLevel()) + '|';
        for (int i = 0; i < root.getRedoStackLength(); ++i) {
            text += ' ' + root.getRedoNameAt(i) + std::to_string(root.getRedoChangeLevelAt(i));
        }
        return text;
    }

    Subject const thing = make(root, 1);
    Deviant a = createDeviant("a");
};

/// For tests that hold for a client's objects and for those of a model.
struct OnBothKinds : TwoDeviants, testing::WithParamInterface<Kind> {
    OnBothKinds() : TwoDeviants(GetParam()) {}
};

inline auto const bothKinds = testing::Values(Kind::Things, Kind::Packages);

} // namespace ZEL::tests
