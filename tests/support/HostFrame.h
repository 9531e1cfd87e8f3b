#pragma once

/// Frames and parameter lists as a host hands them to a render.

#include "abi/HostCodes.h"
#include "abi/HostTypes.h"
#include "tests/support/PageEnd.h"
#include "tests/support/RecordingHost.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace zel::test {

/// A frame in memory of its own, with guard bytes in front of it, behind it and behind
/// every row. Comparing `memory` of two frames compares all of them.
class HostFrame {
public:
    static constexpr std::uint8_t kGuard = 0xCD;
    static constexpr std::ptrdiff_t kGuardBytes = 64;

    struct Shape {
        int width, height;
        int padding = 0;        // guard bytes behind each row
        bool bottomUp = false;  // row 0 lies highest in memory, row bytes are negative
    };

    HostFrame(int pixelBytes, Shape shape)
        : memory(static_cast<std::size_t>(2 * kGuardBytes +
                                          std::ptrdiff_t{shape.height} * Stride(pixelBytes, shape)),
                 kGuard),
          m_shape(shape),
          m_stride(Stride(pixelBytes, shape)) {}

    /// The host's record of this frame.
    PF_LayerDef Layer(PF_WorldFlags flags = PF_WorldFlag_WRITEABLE) {
        PF_LayerDef layer{};
        layer.world_flags = flags;
        layer.data = reinterpret_cast<PF_PixelPtr>(Row(0));
        layer.rowbytes = static_cast<A_long>(m_shape.bottomUp ? -m_stride : m_stride);
        layer.width = m_shape.width;
        layer.height = m_shape.height;
        return layer;
    }

    std::uint8_t* Row(int y) {
        const std::ptrdiff_t at = m_shape.bottomUp ? m_shape.height - 1 - y : y;
        return memory.data() + kGuardBytes + at * m_stride;
    }

    int Width() const { return m_shape.width; }
    int Height() const { return m_shape.height; }

    std::vector<std::uint8_t> memory;

private:
    static std::ptrdiff_t Stride(int pixelBytes, Shape shape) {
        return std::ptrdiff_t{shape.width} * pixelBytes + shape.padding;
    }

    Shape m_shape;
    std::ptrdiff_t m_stride;
};

/// The parameter list of a render: the input layer at 0, then one record per element. The
/// array of pointers ends at an unreadable page.
class ParamList {
public:
    /// `count` records, the layer included, all cleared.
    explicit ParamList(int count)
        : m_defs(static_cast<std::size_t>(count)), m_pointers(m_defs.size()) {
        for (std::size_t i = 0; i < m_defs.size(); ++i) m_pointers[i] = &m_defs[i];
    }

    /// The records that an effect has added, at their defaults.
    explicit ParamList(const std::vector<AddedParam>& added)
        : ParamList(static_cast<int>(added.size()) + 1) {
        for (std::size_t i = 0; i < added.size(); ++i) m_defs[i + 1] = added[i].def;
    }

    int Count() const { return static_cast<int>(m_defs.size()); }
    PF_ParamDef** Pointers() { return m_pointers.data(); }
    PF_ParamDef*& Pointer(int i) { return m_pointers[static_cast<std::size_t>(i)]; }
    PF_ParamDef& operator[](int i) { return m_defs[static_cast<std::size_t>(i)]; }

    void SetLayer(const PF_LayerDef& layer) { m_defs[0].u.ld = layer; }
    void SetSlider(int i, double value) {
        (*this)[i].param_type = PF_Param_FLOAT_SLIDER;
        (*this)[i].u.fs_d.value = value;
    }
    void SetCheckBox(int i, A_long value) {
        (*this)[i].param_type = PF_Param_CHECKBOX;
        (*this)[i].u.bd.value = value;
    }

private:
    std::vector<PF_ParamDef> m_defs;
    PageEndArray<PF_ParamDef*> m_pointers;
};

}  // namespace zel::test
