#include "adapter/linux/ApplicationIdentifier.h"

#include <QRegularExpression>
#include <QStringList>

namespace brindle::adapter {

namespace {

using namespace Qt::StringLiterals;

QString lastPart(const QString &path)
{
    return path.section(u'/', -1);
}

/// Several players of one application add to their name which of them they are.
QString withoutInstance(const QString &name)
{
    static const QRegularExpression instance(u"\\.instance[^.]*$"_s);
    return QString(name).remove(instance);
}

/// The one application that readers know by a name which is the same on every platform. Its desktop entry
/// differs with where it was installed from.
QString nameForReaders(const QString &id)
{
    static const QStringList spotify{u"spotify"_s, u"com.spotify.client"_s, u"spotify_spotify"_s};
    return spotify.contains(id, Qt::CaseInsensitive) ? u"com.spotify.client"_s : id;
}

QString desktopEntry(const PlayerOrigin &origin, const std::function<bool(const QString &id)> &isInstalled)
{
    if (QString named = namedDesktopEntry(origin.desktopEntry); !named.isEmpty())
        return named;
    if (QString program = namedDesktopEntry(lastPart(origin.executable));
        !program.isEmpty() && isInstalled(program))
        return program;
    return withoutInstance(origin.nameBelow);
}

} // namespace

QString namedDesktopEntry(const QString &desktopEntry)
{
    static const QRegularExpression form(u"^[A-Za-z0-9_][A-Za-z0-9_.+-]{0,254}$"_s);
    static const QString suffix = u".desktop"_s;
    // Some players give the path of the file.
    QString id = lastPart(desktopEntry);
    if (id.endsWith(suffix))
        id.chop(suffix.size());
    return form.match(id).hasMatch() ? id : QString();
}

QString applicationIdentifier(
    const PlayerOrigin &origin, const std::function<bool(const QString &id)> &isInstalled)
{
    return nameForReaders(desktopEntry(origin, isInstalled));
}

} // namespace brindle::adapter
