#include "media/MediaLayout.h"

#include <algorithm>

namespace brindle {
namespace {

/// A view whose blocks have at least this much width has them side by side.
constexpr double wide = 560;
constexpr double cardsWidth = 168;
/// Cards below the player need at least this much height; less would cut their one line.
constexpr double leastCardHeight = 24;

bool placesCardsBeside(const QRectF &room)
{
    return room.width() >= wide
        || room.height() < PlayerLayout::artworkSide + MediaLayout::spacing + leastCardHeight;
}

void placePlayerAndCards(MediaLayout &layout, const QRectF &room)
{
    layout.hasCardsBeside = placesCardsBeside(room);
    layout.player = room;
    layout.cards = room;
    if (layout.hasCardsBeside) {
        const double width = std::min(cardsWidth, room.width() * 0.3);
        layout.cards.setLeft(room.right() - width);
        // The player's last letters need some air before the next edge.
        layout.player.setRight(layout.cards.left() - 2 * MediaLayout::spacing);
    } else {
        layout.player.setHeight(PlayerLayout::artworkSide);
        layout.cards.setTop(layout.player.bottom() + MediaLayout::spacing);
    }
}

void divideCards(MediaLayout &layout, bool showClock, bool showWeather)
{
    layout.clock = showClock ? layout.cards : QRectF();
    layout.weather = showWeather ? layout.cards : QRectF();
    if (!showClock || !showWeather)
        return;
    if (layout.hasCardsBeside) {
        layout.clock.setHeight((layout.cards.height() - MediaLayout::cardSpacing) / 2);
        layout.weather.setTop(layout.clock.bottom() + MediaLayout::cardSpacing);
    } else {
        layout.clock.setWidth((layout.cards.width() - MediaLayout::cardSpacing) / 2);
        layout.weather.setLeft(layout.clock.right() + MediaLayout::cardSpacing);
    }
}

} // namespace

MediaLayout MediaLayout::of(QSizeF view, bool showPlayer, bool showClock, bool showWeather)
{
    const QRectF room(padding, padding, std::max(0.0, view.width() - 2 * padding),
        std::max(0.0, view.height() - 2 * padding));
    const bool showCards = showClock || showWeather;
    MediaLayout result;
    if (showPlayer && showCards)
        placePlayerAndCards(result, room);
    else if (showPlayer)
        result.player = room;
    else if (showCards)
        result.cards = room;
    divideCards(result, showClock, showWeather);
    return result;
}

PlayerLayout PlayerLayout::of(QSizeF player)
{
    constexpr double gap = 16;
    constexpr double withArtist = 104;
    constexpr double withStatus = 120;
    PlayerLayout result;
    const double side = std::min(artworkSide, player.height());
    const double top = (player.height() - side) / 2;
    result.artwork = QRectF(0, top, side, side);
    result.column = QRectF(side + gap, top, std::max(0.0, player.width() - side - gap), side);
    result.showsArtist = side >= withArtist;
    result.showsStatus = side >= withStatus;
    return result;
}

CardLayout CardLayout::of(QSizeF card)
{
    if (card.height() < 36)
        return {Form::line, 12};
    if (card.height() < 80)
        return {Form::row, 17};
    // Room for the longest time of day across, and for the lines above and below it.
    return {Form::block, std::clamp(std::min(card.width() * 0.155, card.height() * 0.22), 17.0, 44.0)};
}

} // namespace brindle
