// Descriptor of the DiffCorrIn block.
#pragma once

#include "MessageInfo.h"
#include "ReceiverExport.h"

// The one kind of the format "QLX" that this library describes.
class HOST_RECEIVER_EXPORT QLX_DiffCorrIn_MessageInfo : public MessageInfo {
public:
    // The one instance, alive until the library is unloaded.
    static const QLX_DiffCorrIn_MessageInfo* getInstance();

private:
    QLX_DiffCorrIn_MessageInfo();
    ~QLX_DiffCorrIn_MessageInfo() override;
};
