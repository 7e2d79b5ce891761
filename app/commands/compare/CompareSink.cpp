#include "commands/compare/CompareSink.h"

#include "base/Interrupt.h"

void CompareSink::take(const Found& found)
{
    stores.back().add(found);
    isCut = isCut || (options.onError == OnError::stop && !found.text.empty());
}

// There is nothing to tell of inputs that were not read to their end.
void CompareSink::finish()
{
    if (ended != 2 || isCut || interrupt::requested() || stores[0].size() + stores[1].size() == 0) {
        return;
    }
    const Comparison comparison(formatModel, stores[0], stores[1]);
    write(comparison, output);
    result = comparison.isSame() ? Result::same : Result::different;
}
