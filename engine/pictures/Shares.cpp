#include "pictures/Shares.h"

#include "pictures/Frame.h"

#include <algorithm>

void drawShares(Canvas& canvas, const Box& box, const Shares& shares)
{
    constexpr double leftRoom = 52;
    drawTitle(canvas, box, shares.title);
    const Box frame{box.left + leftRoom, box.top + titleHeight, box.width - leftRoom - rightRoom,
                    box.height - titleHeight - timeAxisHeight};
    const double most = *std::max_element(shares.shares.begin(), shares.shares.end());
    const Range percents{0, std::max(1.0, 108 * most)};
    drawValueAxis(canvas, frame, percents, " %");
    for (const Tick& tick : shares.ticks) {
        canvas.text({frame.left + frame.width * tick.value, frame.bottom() + 15}, tick.label,
                    {.ink = {Role::faint}, .size = 10, .anchor = Anchor::middle});
    }
    canvas.text({frame.left + frame.width / 2, frame.bottom() + 31}, shares.axisTitle,
                {.ink = {Role::faint}, .anchor = Anchor::middle});
    const double width = frame.width / static_cast<double>(shares.shares.size());
    for (std::size_t i = 0; i < shares.shares.size(); ++i) {
        const double height = std::max(0.0, frame.height * percents.share(100 * shares.shares[i]));
        if (height > 0) {
            canvas.rectangle({frame.left + width * static_cast<double>(i), frame.bottom() - height,
                              std::max(1.0, width - 1), height},
                             {Role::bad});
        }
    }
    drawFrame(canvas, frame);
}
