#include "core/registry.h"

#include "core/values.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype LongestString = 1024;
constexpr qsizetype LongestBytes = 4096;

QString asText(ApplicationContext &app, const QVariant &value)
{
    return value.typeId() == QMetaType::QByteArray ? app.fromBytes(value.toByteArray()) : value.toString();
}

QByteArray asBytes(ApplicationContext &app, const QVariant &value)
{
    return value.typeId() == QMetaType::QByteArray ? value.toByteArray() : app.toBytes(value.toString());
}

// The longest head of the text that fits; a character of more bytes stays whole.
QString cutToFit(ApplicationContext &app, const QString &text)
{
    if (app.toBytes(text).size() <= LongestString)
        return text;
    qsizetype fits = 0;
    qsizetype tooLong = text.size();
    while (tooLong - fits > 1) {
        const qsizetype middle = fits + (tooLong - fits) / 2;
        (app.toBytes(text.first(middle)).size() <= LongestString ? fits : tooLong) = middle;
    }
    if (fits > 0 && text[fits - 1].isHighSurrogate())
        --fits;
    return text.first(fits);
}

QVariant converted(ApplicationContext &app, const QVariant &value, int type)
{
    switch (type) {
    case RegistryString:
        return cutToFit(app, asText(app, value));
    case RegistryBytes:
        return asBytes(app, value).left(LongestBytes);
    case RegistryInteger:
        return value.typeId() == QMetaType::Int ? value.toInt() : toInt32(asText(app, value));
    default:
        throw Failure(u"Unsupported value type"_s);
    }
}

bool isEmptyValue(const QVariant &value)
{
    return value.typeId() == QMetaType::QByteArray ? value.toByteArray().isEmpty()
                                                   : value.toString().isEmpty();
}

bool isSupported(int type)
{
    return type == RegistryString || type == RegistryBytes || type == RegistryInteger;
}

} // namespace

bool CreateRegistryKey(ApplicationContext &app, const QString &path)
{
    bool existed = false;
    reportFailure(app, u"RegistryAPI_CreateRegistryKey:  "_s, [&] {
        existed = app.settings.hasKey(path);
        if (!existed)
            app.settings.createKey(path);
    });
    return existed;
}

QVariant GetRegistryValue(ApplicationContext &app, const QString &path, const QString &name, int type,
                          const QVariant &fallback)
{
    QVariant result = fallback;
    reportFailure(app, u"RegistryAPI_GetRegistryValue: "_s, [&] {
        if (!isSupported(type))
            throw Failure(u"Unsupported value type"_s);
        const auto stored = app.settings.value(path, name);
        if (stored && !isEmptyValue(*stored))
            result = converted(app, *stored, type);
    });
    return result;
}

QString GetRegistryText(ApplicationContext &app, const QString &path, const QString &name,
                        const QString &fallback)
{
    return GetRegistryValue(app, path, name, RegistryString, fallback).toString();
}

void SetRegistryValue(ApplicationContext &app, const QString &path, const QString &name, int type,
                      const QVariant &value)
{
    if (!isSupported(type))
        return;
    reportFailure(app, u"RegistryAPI_SetRegistryValue:  "_s, [&] {
        if (app.settings.hasKey(path))
            app.settings.setValue(path, name, converted(app, value, type));
    });
}

} // namespace sondrel
