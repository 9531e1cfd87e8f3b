#pragma once

/// Frames in memory that shows every byte written outside them: between guard bytes,
/// or against a page that must not be touched.

#include "tests/support/Pages.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace zel::test {

using Bytes = std::vector<std::uint8_t>;

/// Pages of memory between two pages that fault when touched.
class FencedPages {
public:
    explicit FencedPages(std::size_t bytes) : fence_(PageSize()), size_(WholePages(bytes)) {
        void* const all = ReservePages(size_ + 2 * fence_);
        if (!all) throw std::bad_alloc();
        first_ = static_cast<std::uint8_t*>(all) + fence_;
        if (!OpenPages(first_, size_)) {
            ReleasePages(all, size_ + 2 * fence_);
            throw std::bad_alloc();
        }
    }
    FencedPages(const FencedPages&) = delete;
    FencedPages& operator=(const FencedPages&) = delete;
    ~FencedPages() { ReleasePages(first_ - fence_, size_ + 2 * fence_); }

    std::span<std::uint8_t> bytes() const { return {first_, size_}; }

private:
    std::size_t fence_, size_;
    std::uint8_t* first_;
};

/// What a frame looks like in memory.
struct FrameShape {
    std::size_t rowBytes;  // that a routine may touch
    int height;
    bool negative = false;         // row 0 is the highest in memory
    std::size_t padding = 0;       // guard bytes between the rows
    std::size_t misalignment = 0;  // of the lowest row
};

enum class Place { guarded, atFront, atBack };

/// A frame with seeded content everywhere, guards included. A test restates what a
/// routine does on a copy of content() and compares the whole with Difference().
class GuardedFrame {
public:
    GuardedFrame(FrameShape shape, Place place, std::uint32_t seed) : shape_(shape) {
        constexpr std::size_t kGuard = 64;
        const std::size_t rows = static_cast<std::size_t>(shape.height > 0 ? shape.height : 0);
        frameBytes_ = rows == 0 ? 0 : (rows - 1) * Step() + shape.rowBytes;
        if (place == Place::guarded) {
            heap_.resize(kGuard + shape.misalignment + frameBytes_ + kGuard);
            memory_ = heap_;
            lowest_ = kGuard + shape.misalignment;
        } else {
            pages_ = Pages(frameBytes_ + kGuard);
            const std::span all = pages_->bytes();
            const std::size_t used = frameBytes_ + kGuard;
            const bool front = place == Place::atFront;
            memory_ = front ? all.first(used) : all.last(used);
            lowest_ = front ? 0 : kGuard;
        }
        for (std::uint8_t& byte : memory_) {
            seed = seed * 1664525u + 1013904223u;
            byte = static_cast<std::uint8_t>(seed >> 24);
        }
    }
    GuardedFrame(const GuardedFrame&) = delete;
    GuardedFrame& operator=(const GuardedFrame&) = delete;
    ~GuardedFrame() {
        if (pages_) Free().push_back(std::move(pages_));
    }

    void* base() const { return memory_.data() + Offset(0); }
    int rowBytes() const {
        const int step = static_cast<int>(Step());
        return shape_.negative ? -step : step;
    }
    /// Where a row lies in content().
    std::size_t Offset(int row) const {
        const int up = shape_.negative && shape_.height > 0 ? shape_.height - 1 - row : row;
        return lowest_ + static_cast<std::size_t>(up) * Step();
    }
    std::span<std::uint8_t> row(int r) const { return memory_.subspan(Offset(r), shape_.rowBytes); }
    Bytes content() const { return {memory_.begin(), memory_.end()}; }

    /// Names the first byte that is not as expected; empty when there is none.
    std::string Difference(const Bytes& expected) const {
        for (std::size_t i = 0; i < memory_.size(); ++i) {
            if (memory_[i] == expected[i]) continue;
            char values[48];
            std::snprintf(values, sizeof values, ": expected %02X, got %02X", expected[i],
                          memory_[i]);
            return Where(i) + values;
        }
        return {};
    }

private:
    std::size_t Step() const { return shape_.rowBytes + shape_.padding; }

    std::string Where(std::size_t i) const {
        if (i < lowest_) return "guard, " + std::to_string(lowest_ - i) + " bytes before";
        const std::size_t at = i - lowest_;
        if (at >= frameBytes_) return "guard, " + std::to_string(at - frameBytes_) + " bytes after";
        const std::size_t up = at / Step(), byte = at % Step();
        const std::size_t row =
            shape_.negative ? static_cast<std::size_t>(shape_.height) - 1 - up : up;
        return std::string(byte < shape_.rowBytes ? "row " : "guard after row ") +
               std::to_string(row) + ", byte " + std::to_string(byte);
    }

    // Mapping pages costs more than most routines under test: they are used again.
    static std::vector<std::unique_ptr<FencedPages>>& Free() {
        static std::vector<std::unique_ptr<FencedPages>> pages;
        return pages;
    }
    static std::unique_ptr<FencedPages> Pages(std::size_t bytes) {
        constexpr std::size_t kUsual = std::size_t{1} << 18;
        if (bytes > kUsual) throw std::bad_alloc();
        if (Free().empty()) return std::make_unique<FencedPages>(kUsual);
        std::unique_ptr<FencedPages> pages = std::move(Free().back());
        Free().pop_back();
        return pages;
    }

    FrameShape shape_;
    std::size_t frameBytes_ = 0, lowest_ = 0;
    Bytes heap_;
    std::unique_ptr<FencedPages> pages_;
    std::span<std::uint8_t> memory_;
};

}  // namespace zel::test
