#pragma once

#include "host/class_desc.h"

// What the host is told of the exporter. One object per module.
class ExpClassDesc : public host::ClassDesc {
public:
    int IsPublic() override { return 1; }
    void* Create(bool loading) override;
    const char* ClassName() override;
    std::uint32_t SuperClassID() override;
    host::ClassId ClassID() override { return {0x5FD31026, 0x0E63557D}; }
    const char* Category() override;
};

ExpClassDesc& ExporterDescriptor();
