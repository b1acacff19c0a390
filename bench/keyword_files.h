// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "project/clsKeywords.h"

#include <QByteArray>

namespace sondrel {

/// Puts a project of many keywords on disk, with a result of each on one engine. Every so many of them has a
/// second listing; none with 0.
inline void writeKeywordFiles(ApplicationContext &app, const QString &project, const QString &engine,
                              int count, int secondListingEvery = 0)
{
    using namespace Qt::Literals::StringLiterals;
    QByteArray terms;
    QByteArray results;
    for (int number = 0; number < count; ++number) {
        const QByteArray term = "cheap garden furniture " + QByteArray::number(number);
        const QByteArray rest = ";1,240,000;" + QByteArray::number(number % 100 + 1) +
                                ";1;12;+3;http://www.site.example/shop/page" + QByteArray::number(number) +
                                ".html;11/08/2026\r\n";
        terms += term + ";-1\r\n";
        results += term + rest;
        if (secondListingEvery > 0 && number % secondListingEvery == 0)
            results += term + "(2)" + rest;
    }
    app.files.makeFolder(app.appFile({u"Projects"_s, project}));
    app.files.writeAll(app.appFile({u"Projects"_s, project, u"Keywords.dat"_s}), terms);
    app.files.writeAll(app.appFile({u"Projects"_s, project, clsKeywords::resultFileName(engine)}), results);
}

} // namespace sondrel
