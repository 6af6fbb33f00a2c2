// The blend record and the names.
#include <oxlume/LxBlend.h>

#include "blend/Mode.h"

namespace {

constexpr int32_t everyChannel = static_cast<int32_t>(lx::Channel::rgba);

uint32_t byteOf(int32_t value) {
    return static_cast<uint32_t>(value) & 0xFF;
}

} // namespace

LxBlend LxBlend_Make(int32_t mode, int32_t opacity) {
    return LxBlend_WithChannel(mode, opacity, everyChannel);
}

LxBlend LxBlend_WithChannel(int32_t mode, int32_t opacity, int32_t channel) {
    LxBlend blend = {};
    blend.mode = byteOf(mode);
    blend.opacity = byteOf(opacity);
    blend.channel = byteOf(channel);
    return blend;
}

int32_t LxBlend_Mode(const LxBlend *blend) {
    return blend->mode;
}

int32_t LxBlend_Opacity(const LxBlend *blend) {
    return blend->opacity;
}

int32_t LxBlend_Channel(const LxBlend *blend) {
    return blend->channel;
}

void LxBlend_SetMode(LxBlend *blend, int32_t mode) {
    blend->mode = byteOf(mode);
}

void LxBlend_SetOpacity(LxBlend *blend, int32_t opacity) {
    blend->opacity = byteOf(opacity);
}

void LxBlend_SetChannel(LxBlend *blend, int32_t channel) {
    blend->channel = byteOf(channel);
}

LxBlend *LxBlend_SetPointer(LxBlend *blend, void *pointer) {
    blend->pointer = pointer;
    return blend;
}

const char *LxBlend_ModeName(int32_t mode) {
    return lx::modeName(mode);
}

const char *LxBlend_ChannelName(int32_t channel) {
    return lx::channelName(channel);
}
