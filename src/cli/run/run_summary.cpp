#include "cli/run/run_summary.h"

#include "messages/utf8_words.h"

namespace cli {

eBilingual SummaryOf(const eRunRecord& record, bool knowsModels) {
    eBilingual line;
    if (knowsModels) {
        line += Utf8Words(ePhrase::SumWritten, Counted(record.WrittenModels(), ePhrase::CountModel));
    }
    line += Utf8Words(ePhrase::SumChanged, Counted(record.ChangedFiles(), ePhrase::CountFile));
    eBilingual told = Counted(record.CountErrors(), ePhrase::CountError);
    told.AddToList(Counted(record.Count(eSeverity::Warning), ePhrase::CountWarning));
    line += told;
    if (const int advice = record.Count(eSeverity::Advice); advice > 0) {
        line += Utf8Words(ePhrase::SumAdvice, advice);
    }
    const std::string seconds = (format("%.2f") % record.seconds).Text();
    return line += Utf8Words(ePhrase::SumSeconds, seconds,
                             record.cancelled ? Utf8Words(ePhrase::SumCancelled) : eBilingual());
}

}  // namespace cli
