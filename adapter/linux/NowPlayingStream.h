#pragma once

#include "adapter/linux/ArtworkLoader.h"
#include "adapter/linux/LineWriter.h"
#include "adapter/linux/Players.h"
#include "adapter/linux/Reporter.h"

namespace brindle::adapter {

/// Follows one player at a time and tells of it in lines.
class NowPlayingStream : public QObject
{
    Q_OBJECT

public:
    struct Settings
    {
        /// Seconds for which changes are gathered.
        double debounce;
        /// The program that fetches remote pictures.
        QString fetchProgram;
        /// Where the lines go.
        int output;
    };

    NowPlayingStream(const QDBusConnection &bus, Scheduler &scheduler, const Settings &settings);

    /// The player of the lines, which is the one that commands are meant for; null where there is none.
    Player *shown() const;

Q_SIGNALS:
    /// Nobody reads the lines any more.
    void readerGone();
    /// The bus has ended, and with it all that could be told.
    void busGone();

private:
    void takeChange();
    void follow(Player *player);
    void followTrack(const Player &player);
    void settle(const Player &player);
    Payload present() const;

    Scheduler &m_scheduler;
    Players m_players;
    ArtworkLoader m_artwork;
    LineWriter m_writer;
    Reporter m_reporter;
    /// The number of the player that is followed; 0 for none.
    quint64 m_followed = 0;
    Track m_track;
    /// The events of its position that a later look has confirmed, or will.
    int m_confirmedEvents = 0;
    Delay m_confirmation;
};

} // namespace brindle::adapter
