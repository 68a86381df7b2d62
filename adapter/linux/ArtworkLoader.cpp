#include "adapter/linux/ArtworkLoader.h"

#include "adapter/linux/Artwork.h"
#include "adapter/linux/ArtworkFetch.h"

#include <utility>

namespace brindle::adapter {

namespace {

constexpr qsizetype keptBytes = qsizetype(8) * 1024 * 1024;

} // namespace

ArtworkLoader::ArtworkLoader(Scheduler &scheduler, const QString &fetchProgram)
    : m_scheduler(scheduler)
    , m_fetchProgram(fetchProgram)
    , m_fetched(keptBytes)
    , m_reads(scheduler)
{ }

ArtworkLoader::~ArtworkLoader() = default;

void ArtworkLoader::want(const QByteArray &address)
{
    if (address == m_address)
        wantAgain();
    else
        wantOther(address);
}

void ArtworkLoader::wantAgain()
{
    // What stands in an address, or on the network, is taken to be the same still.
    if (Artwork::kindOf(m_address) != Artwork::Kind::file)
        return;
    if (m_isReading)
        m_isWantedAgain = true;
    else
        read();
}

void ArtworkLoader::wantOther(const QByteArray &address)
{
    m_address = address;
    m_picture.clear();
    m_isReading = false;
    m_isWantedAgain = false;
    m_fetch.reset();
    ++m_begun;
    const Artwork::Kind kind = Artwork::kindOf(address);
    if (kind == Artwork::Kind::remote)
        fetch();
    else if (kind != Artwork::Kind::none)
        read();
}

void ArtworkLoader::read()
{
    m_isReading = m_reads.start([address = m_address] { return Artwork::read(address); },
        m_lifetime.guard([this, number = m_begun](const QByteArray &picture) {
            if (number == m_begun)
                wasRead(picture);
        }));
}

void ArtworkLoader::wasRead(const QByteArray &picture)
{
    m_isReading = false;
    if (std::exchange(m_isWantedAgain, false))
        read();
    become(picture);
}

void ArtworkLoader::fetch()
{
    if (const QByteArray *kept = m_fetched.object(m_address)) {
        m_picture = *kept;
        return;
    }
    m_fetch = std::make_unique<ArtworkFetch>(
        m_scheduler, m_fetchProgram, m_address, [this](const QByteArray &picture) { fetched(picture); });
}

void ArtworkLoader::fetched(const QByteArray &picture)
{
    // It is the fetch that calls; it may go once it has returned.
    m_scheduler.post(m_lifetime.guard([this, number = m_begun] {
        if (number == m_begun)
            m_fetch.reset();
    }));
    if (!picture.isEmpty())
        m_fetched.insert(m_address, new QByteArray(picture), picture.size());
    become(picture);
}

void ArtworkLoader::become(const QByteArray &picture)
{
    m_picture = picture;
    Q_EMIT changed();
}

} // namespace brindle::adapter
