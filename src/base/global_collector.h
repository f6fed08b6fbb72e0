// The modules of an application: what is to be started and stopped with it. Nothing starts them in a plug-in,
// where the process belongs to the host.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/event_bus.h"

struct eModuleRecord {
    std::string name;
    void (*start)() = nullptr;  // may be null
    void (*stop)() = nullptr;   // may be null
};

// Base of objects that live under the collector and go through it only; any other end is fatal.
class eGlobalModule {
public:
    virtual ~eGlobalModule() noexcept(false);
};

class eGlobalCollector : public eEventable {
public:
    static eGlobalCollector& Instance();

    void Register(const eModuleRecord& record) { records.push_back(record); }
    const std::vector<eModuleRecord>& Records() const { return records; }
    // In the order of registration, and in the reverse order.
    void StartModules();
    void StopModules();

    void Destroy(std::unique_ptr<eGlobalModule> module);
    int ShutDownCount() const { return shutDownCount; }  // modules going at this moment

    // Work for later; a fatal exit drops it.
    void AddPending(std::function<void()> work) { pending.push_back(std::move(work)); }
    void RunPending();
    std::size_t PendingCount() const { return pending.size(); }

    void OnMessage(int message) override;

private:
    eGlobalCollector();

    std::vector<eModuleRecord> records;
    std::vector<std::function<void()>> pending;
    int shutDownCount = 0;
};

// A static object of this type enters its record at static initialisation.
class eModuleRegistration {
public:
    explicit eModuleRegistration(const eModuleRecord& record) {
        eGlobalCollector::Instance().Register(record);
    }
};
