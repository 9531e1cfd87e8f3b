/// A module whose render throws an int, as hosts' own helpers do.

#include "host/CAEFxLut.h"
#include "host/Entry.h"

namespace {

class ThrowsInt : public CAEFxLut {
    void BuildLut(CUtilLut*, float*) override { throw 42; }
};

ThrowsInt effect;

}  // namespace

CAEFx& TheEffect() { return effect; }
