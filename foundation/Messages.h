#pragma once

#include "foundation/Failures.h"

#include <cstdint>

// Message numbers that travel through broadcasters, attachments and commands.
// Those that are not small numbers are four-character codes, first character
// most significant.

// Broadcasts (WBroadcaster::Broadcast).
inline constexpr std::int32_t kMsgBroadcasterDied = 202;     // parameter: the broadcaster
inline constexpr std::int32_t kMsgViewMatrixChanged = 20003; // parameter: the combined matrix
inline constexpr std::int32_t kMsgFieldOfViewChanged = MakeFourCharCode("CFov"); // float*
inline constexpr std::int32_t kMsgLightPlaced = MakeFourCharCode("rstV");        // null
inline constexpr std::int32_t kMsgShapeFinished = MakeFourCharCode("rstA");      // null
// Text layout values; parameter: pointer to the new value as int32_t.
inline constexpr std::int32_t kMsgTextPositionChanged = MakeFourCharCode("nMvM");
inline constexpr std::int32_t kMsgTextSpacingChanged = MakeFourCharCode("nSpM");
inline constexpr std::int32_t kMsgTextRotationChanged = MakeFourCharCode("nRtM");
inline constexpr std::int32_t kMsgTextRevolveChanged = MakeFourCharCode("nRvM");
inline constexpr std::int32_t kMsgTextTiltChanged = MakeFourCharCode("nRlM");
inline constexpr std::int32_t kMsgTextWidthChanged = MakeFourCharCode("nWtM");
inline constexpr std::int32_t kMsgTextHeightChanged = MakeFourCharCode("nHtM");
inline constexpr std::int32_t kMsgTextDepthChanged = MakeFourCharCode("nDpM");

// Messages to attachments (WAttachable::RunAttachments).
inline constexpr std::int32_t kMsgAnyMessage = -2; // an attachment that reacts to every message
inline constexpr std::int32_t kMsgCommandStatus = 815;
inline constexpr std::int32_t kMsgSubmitAdorners = 2000;    // parameter: the frame's viewer context
inline constexpr std::int32_t kMsgAdornerSecondPass = 2001; // parameter: the frame's viewer context

// Commands (WCommander::DispatchCommand).
// Parameter: two words; in, the view; out, the new light or null.
inline constexpr std::int32_t kCmdAddLight = 100001;
