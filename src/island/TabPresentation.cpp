#include "island/TabPresentation.h"

namespace brindle {

TabPresentation presentationOf(IslandTab tab)
{
    switch (tab) {
    case IslandTab::media:
        return {tab, QStringLiteral("Media"), QStringLiteral("waveform")};
    case IslandTab::shelf:
        return {tab, QStringLiteral("Shelf"), QStringLiteral("tray.full.fill")};
    case IslandTab::calculator:
        return {tab, QStringLiteral("Calculator"), QStringLiteral("function")};
    case IslandTab::assistant:
        return {tab, QStringLiteral("AI"), QStringLiteral("sparkles")};
    }
    Q_UNREACHABLE();
}

} // namespace brindle
