#include "cli/run/run_summary.h"

#include "messages/utf8_words.h"

namespace cli {

eBilingual SummaryOf(const eRunRecord& record, bool knowsModels) {
    eBilingual line;
    if (knowsModels) {
        line.AddToList(Utf8Words(ePhrase::SumWritten, record.WrittenModels()));
    }
    line.AddToList(Utf8Words(ePhrase::SumChanged, record.ChangedFiles()));
    line.AddToList(Utf8Words(ePhrase::CountError, record.CountErrors()));
    line.AddToList(Utf8Words(ePhrase::CountWarning, record.Count(eSeverity::Warning)));
    if (const int advice = record.Count(eSeverity::Advice); advice > 0) {
        line.AddToList(Utf8Words(ePhrase::CountAdvice, advice));
    }
    line.AddToList(Utf8Words(ePhrase::SumSeconds, (format("%.2f") % record.seconds).Text()));
    if (record.cancelled) {
        line.AddToList(Utf8Words(ePhrase::SumCancelled));
    }
    return line;
}

}  // namespace cli
