// The registry of the format: lists its message kinds.
#pragma once

#include "FormatInfo.h"
#include "PluginExport.h"
#include "Singleton.h"

class VORLO_RTCM2_EXPORT RTCM2_FormatInfo final : public FormatInfo {
public:
    // Complete with all kinds, unless the registry is just being set up.
    static const RTCM2_FormatInfo* getInstance();

private:
    friend class Singleton<RTCM2_FormatInfo>;

    VORLO_RTCM2_INTERNAL RTCM2_FormatInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_FormatInfo() override;

    VORLO_RTCM2_INTERNAL void setupMessageInfos();

    bool setupDone;
};
