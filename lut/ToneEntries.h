#pragma once

/// Where brightness and gamma find their controls in the parameter array: both have
/// four groups of 20 entries, and in each group three controls for all channels
/// followed by the same three for every channel.
///
///     entry of the group   1 2 3          5 6 7   10 11 12   15 16 17
///     holds                all channels   red     green      blue

namespace zel::lut {

/// First entry of each group.
enum ToneGroup : int { kMaster = 0, kHighlights = 20, kMidtones = 40, kShadows = 60 };

/// Entry of the first of the three controls for all channels.
constexpr int ForAllChannels(ToneGroup group) { return group + 1; }

/// Entry of the first of the three controls of one channel (0 red, 1 green, 2 blue).
constexpr int ForChannel(ToneGroup group, int channel) { return group + 5 + 5 * channel; }

}  // namespace zel::lut
