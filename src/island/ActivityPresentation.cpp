#include "island/ActivityPresentation.h"

#include <cmath>

namespace brindle {

ActivityPresentation ActivityPresentation::of(const SystemActivity &activity)
{
    const ActivityContent &content = activity.content;
    ActivityPresentation result;
    result.title = content.title;
    result.detail = content.detail.value_or(QString());
    result.symbol = content.symbol;
    result.accessibleName =
        result.detail.isEmpty() ? result.title : result.title + QStringLiteral(", ") + result.detail;
    if (content.progress) {
        result.hasProgress = true;
        result.progress = *content.progress;
        result.accessibleValue = QStringLiteral("%1 percent").arg(std::lround(result.progress * 100));
    }
    return result;
}

} // namespace brindle
