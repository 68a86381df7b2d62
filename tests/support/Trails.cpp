#include "support/Trails.h"

#include <QRegularExpression>

namespace brindle::trails {

double Chance::pause()
{
    switch (below(10)) {
    case 0:
    case 1:
    case 2:
        return 0;
    case 9:
        return fraction() * 12;
    default:
        return fraction() * 0.3;
    }
}

QString kindOf(QString complaint)
{
    static const QRegularExpression details(QStringLiteral("'[^']*'|[-0-9.e]+"));
    return complaint.remove(details);
}

std::size_t numberFrom(const char *variable, std::size_t fallBack)
{
    bool isNumber = false;
    const qulonglong number = qEnvironmentVariable(variable).toULongLong(&isNumber);
    return isNumber ? std::size_t(number) : fallBack;
}

} // namespace brindle::trails
