#pragma once

#include "base/bilingual.h"
#include "cli/run/run_record.h"

namespace cli {

// The last line of a run, UTF-8: what it has written and told. A plug-in module does not tell of its models.
eBilingual SummaryOf(const eRunRecord& record, bool knowsModels);

}  // namespace cli
