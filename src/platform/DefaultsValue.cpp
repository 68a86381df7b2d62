#include "platform/DefaultsValue.h"

#include <cmath>

namespace brindle::DefaultsValue {

namespace {

bool isNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

} // namespace

bool toBool(const QVariant &value)
{
    return toDouble(value) != 0;
}

double toDouble(const QVariant &value)
{
    return isNumber(value) ? value.toDouble() : 0;
}

qint64 toInteger(const QVariant &value)
{
    if (value.typeId() != QMetaType::Double)
        return isNumber(value) ? value.toLongLong() : 0;
    // Beyond this the conversion has no meaning, and neither has the value as an integer.
    constexpr double limit = 9.0e18;
    const double number = value.toDouble();
    return std::abs(number) < limit ? qint64(number) : 0;
}

std::optional<QString> toString(const QVariant &value)
{
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

std::optional<QStringList> toStringList(const QVariant &value)
{
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList();
    if (value.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    QStringList strings;
    for (const QVariant &element : value.toList()) {
        if (element.typeId() != QMetaType::QString)
            return std::nullopt;
        strings.append(element.toString());
    }
    return strings;
}

} // namespace brindle::DefaultsValue
