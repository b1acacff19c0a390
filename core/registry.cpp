#include "core/registry.h"

#include "core/values.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype LongestString = 1024;
constexpr qsizetype LongestBytes = 4096;

QString asText(ApplicationContext &app, const QVariant &value)
{
    if (value.typeId() == QMetaType::QByteArray)
        return app.fromBytes(value.toByteArray());
    return value.toString();
}

qint32 asInteger(ApplicationContext &app, const QVariant &value)
{
    if (value.typeId() == QMetaType::QByteArray || value.typeId() == QMetaType::QString)
        return toInt32(asText(app, value));
    return value.toInt();
}

QVariant converted(ApplicationContext &app, const QVariant &value, int type)
{
    switch (type) {
    case RegistryString: {
        // The limit is one of bytes; a two-byte character at the edge goes as a whole.
        QString text = asText(app, value);
        while (app.toBytes(text).size() > LongestString)
            text.chop(1);
        return text;
    }
    case RegistryBytes:
        return (value.typeId() == QMetaType::QByteArray ? value.toByteArray() : app.toBytes(value.toString()))
            .first(std::min<qsizetype>(LongestBytes, value.toByteArray().size()));
    case RegistryInteger:
        return asInteger(app, value);
    default:
        throw Failure(u"Unsupported value type"_s);
    }
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
        if (type != RegistryString && type != RegistryBytes && type != RegistryInteger)
            throw Failure(u"Unsupported value type"_s);
        const auto stored = app.settings.value(path, name);
        if (!stored)
            return;
        QVariant value = converted(app, *stored, type);
        if (type != RegistryInteger && value.toByteArray().isEmpty())
            return;
        result = std::move(value);
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
    if (type != RegistryString && type != RegistryBytes && type != RegistryInteger)
        return;
    reportFailure(app, u"RegistryAPI_SetRegistryValue:  "_s, [&] {
        if (app.settings.hasKey(path))
            app.settings.setValue(path, name, converted(app, value, type));
    });
}

} // namespace sondrel
