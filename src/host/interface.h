#pragma once

#include <string>

#include "base/process_link.h"
#include "host/bitmap.h"
#include "host/node.h"
#include "host/values.h"

namespace host {

// The undo of the scene: Cancel takes back every change since the matching Begin. Holds may nest.
class Hold {
public:
    virtual ~Hold() = default;
    virtual void Begin() = 0;
    virtual void Cancel() = 0;
};

// The host itself. Texts are bytes in code page 1251, paths have the host's own slashes.
class Interface {
public:
    // The unit code of metres.
    static constexpr int kMetres = 5;
    // GetDir: the folder of plug-in configurations.
    static constexpr int kPluginConfigDir = 9;

    virtual ~Interface() = default;

    // The parent of message boxes; null without a window.
    virtual void* GetMAXHWnd() = 0;

    virtual INode* GetRootNode() = 0;
    // The first node of that name in depth-first order, letter case ignored; null if there is none.
    virtual INode* GetINodeByName(const char* name) = 0;
    // In ticks.
    virtual Interval GetAnimRange() = 0;
    virtual int GetTicksPerFrame() = 0;
    virtual Color GetAmbient(TimeValue t) = 0;
    // Metres per scene unit for kMetres.
    virtual double GetMasterScale(int unit) = 0;

    virtual std::string GetCurFilePath() = 0;
    // Without a slash at the end.
    virtual std::string GetDir(int which) = 0;

    virtual int GetCommandPanelTaskMode() = 0;
    virtual void SetCommandPanelTaskMode(int mode) = 0;

    virtual void ProgressStart(const std::string& title) = 0;
    virtual void ProgressUpdate(int percent) = 0;
    virtual void ProgressEnd() = 0;
    // True once the user has asked to stop.
    virtual bool GetCancel() = 0;

    virtual int GetNumNamedSelSets() = 0;
    virtual const std::string& GetNamedSelSetName(int set) = 0;
    virtual int GetNamedSelSetItemCount(int set) = 0;
    virtual INode* GetNamedSelSetItem(int set, int item) = 0;

    virtual Hold& theHold() = 0;
    virtual BitmapManager& TheManager() = 0;

    // What a plug-in module takes over from this host's process while it works for it; null in a host whose
    // modules go to the operating system themselves.
    virtual const eProcessLink* ProcessLink() { return nullptr; }
};

}  // namespace host
