#include "ip/IpCopy.h"

#include "ip/detail/Memory.h"
#include "ip/detail/Rows.h"

#include <algorithm>

using namespace zel::ip;

void IpFrame_Copy_Master(IpScanCopyFn* scanFn, void* dst, int dstRowBytes, void* src,
                         int srcRowBytes, int width, int height) {
    const Rows to = Upwards({dst, dstRowBytes}, height);
    const Rows from = Upwards({src, srcRowBytes}, height);
    const int toBytes = static_cast<int>(to.step), fromBytes = static_cast<int>(from.step);
    ForEach(
        height,
        [=](void* toRow, void* fromRow) { scanFn(toRow, toBytes, fromRow, fromBytes, width); }, to,
        from);
}

void IpScan_Copy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int) {
    const int bytes = std::min(dstRowBytes, srcRowBytes);
    if (bytes > 0) std::memcpy(dst, src, static_cast<std::size_t>(bytes));
}

void IpFrame_Copy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    IpFrame_Copy_Master(IpScan_Copy, dst, dstRowBytes, src, srcRowBytes, width, height);
}

void IpScan_Dummy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width) {
    IpScan_Copy(dst, dstRowBytes, src, srcRowBytes, width);
}

void IpFrame_Dummy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    IpFrame_Copy(dst, dstRowBytes, src, srcRowBytes, width, height);
}
