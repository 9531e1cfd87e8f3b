/// A module that takes only formats which the effects of this project do not.

#include "host/CAEFxLut.h"
#include "host/Entry.h"

#include <cstring>

namespace {

class OtherFormats : public CAEFxLut {
public:
    OtherFormats() { std::strcpy(m_szName, "Other Formats"); }

private:
    int QueryPixelFormatCount() override { return 2; }
    PrPixelFormat QueryPixelFormat(int i) override {
        return i == 0 ? PrPixelFormat_V210_422_10u_601 : PrPixelFormat_ARGB_4444_32f;
    }
};

OtherFormats effect;

}  // namespace

CAEFx& TheEffect() { return effect; }
