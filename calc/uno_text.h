// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <rtl/ustring.hxx>

#include <initializer_list>

namespace css = com::sun::star;

namespace sondrel {

inline rtl::OUString toUno(const QString &text)
{
    return rtl::OUString(reinterpret_cast<const sal_Unicode *>(text.utf16()),
                         static_cast<sal_Int32>(text.size()));
}

inline QString fromUno(const rtl::OUString &text)
{
    return QString(reinterpret_cast<const QChar *>(text.getStr()), text.getLength());
}

template <typename Item>
css::uno::Sequence<Item> sequenceOf(std::initializer_list<Item> items)
{
    return {items.begin(), static_cast<sal_Int32>(items.size())};
}

inline css::beans::PropertyValue property(const char *name, const css::uno::Any &value)
{
    css::beans::PropertyValue result;
    result.Name = rtl::OUString::createFromAscii(name);
    result.Value = value;
    return result;
}

} // namespace sondrel
