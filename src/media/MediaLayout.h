#pragma once

#include <QObject>
#include <QRectF>
#include <QSizeF>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// Where the blocks of the media view stand, in points from its top left corner. A block that is off, or has
/// no room, has an empty frame. A plain value.
///
/// In a wide view the cards stand beside the player, in a narrow one below it; without a player they have the
/// view to themselves, side by side.
class MediaLayout
{
    Q_GADGET
    QML_VALUE_TYPE(mediaLayout)
    Q_PROPERTY(QRectF player MEMBER player)
    Q_PROPERTY(QRectF cards MEMBER cards)
    Q_PROPERTY(QRectF clock MEMBER clock)
    Q_PROPERTY(QRectF weather MEMBER weather)
    Q_PROPERTY(bool hasCards READ hasCards)
    Q_PROPERTY(bool hasCardsBeside MEMBER hasCardsBeside)

public:
    /// Points.
    static constexpr double padding = 16;
    static constexpr double spacing = 10;
    static constexpr double cardSpacing = 8;

    QRectF player;
    /// Both cards together; theirs are in the view's coordinates, too.
    QRectF cards;
    QRectF clock;
    QRectF weather;
    /// Whether the cards come from the side rather than from below.
    bool hasCardsBeside = false;

    bool hasCards() const { return !cards.isEmpty(); }

    static MediaLayout of(QSizeF view, bool showPlayer, bool showClock, bool showWeather);

    bool operator==(const MediaLayout &) const = default;
};

/// Where the parts of the player stand, in points from its top left corner, and which of them it has room
/// for.
class PlayerLayout
{
    Q_GADGET
    QML_VALUE_TYPE(playerLayout)
    Q_PROPERTY(QRectF artwork MEMBER artwork)
    Q_PROPERTY(QRectF column MEMBER column)
    Q_PROPERTY(bool showsArtist MEMBER showsArtist)
    Q_PROPERTY(bool showsStatus MEMBER showsStatus)

public:
    /// Points, where there is room for it.
    static constexpr double artworkSide = 152;

    QRectF artwork;
    /// Of the texts, the slider and the buttons.
    QRectF column;
    bool showsArtist = true;
    bool showsStatus = true;

    static PlayerLayout of(QSizeF player);

    bool operator==(const PlayerLayout &) const = default;
};

/// How a card arranges what it shows, by the room that it has.
class CardLayout
{
    Q_GADGET
    QML_VALUE_TYPE(cardLayout)
    /// All in one line.
    Q_PROPERTY(bool isLine READ isLine)
    /// One below the other, in the middle; otherwise the symbol stands before two lines.
    Q_PROPERTY(bool isBlock READ isBlock)
    Q_PROPERTY(double valueSize MEMBER valueSize)

public:
    enum class Form { line, row, block };

    Form form = Form::row;
    /// Of the type of the card's main text, in points.
    double valueSize = 17;

    bool isLine() const { return form == Form::line; }
    bool isBlock() const { return form == Form::block; }

    static CardLayout of(QSizeF card);

    bool operator==(const CardLayout &) const = default;
};

} // namespace brindle
