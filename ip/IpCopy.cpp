// The walk of the family, and the copies that know no layout.

#include "ip/IpCopy.h"
#include "ip/IpTables.h"

#include "ip/detail/CopyVariants.h"
#include "ip/detail/Units.h"

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

void IpFrame_Copy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int, int height) {
    const auto size = [](int rowBytes) { return std::int64_t{rowBytes} * (rowBytes < 0 ? -1 : 1); };
    const std::int64_t bytes = std::min(size(dstRowBytes), size(srcRowBytes));
    if (dstRowBytes == srcRowBytes && height > 1 && bytes * height <= INT32_MAX) {
        // Rows without gaps are one row; a long copy is quicker than many short ones.
        const int all = static_cast<int>(bytes * height);
        return CopyFrame(kPlainCopy, Upwards({dst, dstRowBytes}, height).first, all,
                         Upwards({src, srcRowBytes}, height).first, all, all, 1);
    }
    // The family counts its units in bytes.
    const int width = static_cast<int>(std::min<std::int64_t>(bytes, INT32_MAX));
    CopyFrame(kPlainCopy, dst, dstRowBytes, src, srcRowBytes, width, height);
}

void IpScan_Dummy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width) {
    IpScan_Copy(dst, dstRowBytes, src, srcRowBytes, width);
}

void IpFrame_Dummy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    IpFrame_Copy(dst, dstRowBytes, src, srcRowBytes, width, height);
}

void IpScan_Copy_Endian32(void* dst, int, void* src, int, int width) {
    MapUnits<std::uint32_t>(dst, src, width, ByteReversed);
}

void IpFrame_Copy_Endian32(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width,
                           int height) {
    CopyFrame(kEndian32, dst, dstRowBytes, src, srcRowBytes, width, height);
}

void IpFrame_Flip(void* base, int rowBytes, int height) {
    const Rows rows{base, rowBytes};
    const auto swap = [=](void* a, void* b) {
        IpScan_Swap(static_cast<int*>(a), static_cast<int*>(b), rowBytes);
    };
    if (height > 1) ForEach(height / 2, swap, rows, Rows{rows[height - 1], -rows.step});
}
