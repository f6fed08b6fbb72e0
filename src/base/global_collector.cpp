#include "base/global_collector.h"

#include "base/diagnostics.h"
#include "base/format.h"

namespace {

// Tells which modules the application is made of.
void ReportLibraries() {
    const std::vector<eModuleRecord>& records = eGlobalCollector::Instance().Records();
    std::string names;
    for (const eModuleRecord& record : records) {
        names += (names.empty() ? "" : ", ") + record.name;
    }
    Warn(__FILE__, __LINE__, (format("Libraries (%1%): %2%") % records.size() % names).Text());
}

const eModuleRegistration startRecord({"app.start", ReportLibraries, nullptr});
const eModuleRegistration applicationRecord({"app", nullptr, nullptr});

}  // namespace

eGlobalModule::~eGlobalModule() noexcept(false) {
    if (eGlobalCollector::Instance().ShutDownCount() < 1) {
        Fail(__FILE__, __LINE__, "GlobalCollector: trying to destroy global module by illeal way");
    }
}

eGlobalCollector::eGlobalCollector() {
    Bus().Subscribe(messageFatalExit, *this);
}

eGlobalCollector& eGlobalCollector::Instance() {
    static eGlobalCollector collector;
    return collector;
}

void eGlobalCollector::StartModules() {
    for (std::size_t index = 0; index < records.size(); ++index) {
        if (records[index].start != nullptr) {
            records[index].start();
        }
    }
}

void eGlobalCollector::StopModules() {
    for (std::size_t index = records.size(); index > 0; --index) {
        if (records[index - 1].stop != nullptr) {
            records[index - 1].stop();
        }
    }
}

void eGlobalCollector::Destroy(std::unique_ptr<eGlobalModule> module) {
    ++shutDownCount;
    module.reset();
    --shutDownCount;
}

void eGlobalCollector::RunPending() {
    std::vector<std::function<void()>> due;
    due.swap(pending);
    for (const std::function<void()>& work : due) {
        work();
    }
}

void eGlobalCollector::OnMessage(int message) {
    if (message == messageFatalExit) {
        pending.clear();
    }
}
