#include "commands/compare/CompareSink.h"

#include "base/Interrupt.h"

// There is nothing to tell of inputs that were not read to their end.
void CompareSink::finish()
{
    if (ended != 2 || interrupt::requested() || stores[0].size() + stores[1].size() == 0) {
        return;
    }
    const Comparison comparison(formatModel, decoder, stores[0], stores[1]);
    write(comparison, output);
    result = comparison.isSame() ? Result::same : Result::different;
}
