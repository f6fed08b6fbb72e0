#pragma once

#include <cstdint>

#include "host/interface.h"

namespace host {

// What a host hands to an exporter beside itself; nothing of it is read here.
class ExpInterface {
public:
    virtual ~ExpInterface() = default;
};

// The face of a scene exporter towards the host.
class SceneExport {
public:
    virtual ~SceneExport() = default;

    virtual int ExtCount() = 0;
    virtual const char* Ext(int n) = 0;
    virtual const char* LongDesc() = 0;
    virtual const char* ShortDesc() = 0;
    virtual const char* AuthorName() = 0;
    virtual const char* CopyrightMessage() = 0;
    virtual const char* OtherMessage1() = 0;
    virtual const char* OtherMessage2() = 0;
    virtual unsigned Version() = 0;
    virtual void ShowAbout(void* window) = 0;
    virtual int DoExport(const char* name, ExpInterface* exportInterface, Interface* hostInterface,
                         bool suppressPrompts, std::uint32_t options) = 0;
    virtual bool SupportsOptions(int ext, std::uint32_t options) = 0;
};

}  // namespace host
