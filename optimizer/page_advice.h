// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>
#include <QStringList>

// The sentences of advice, each as the reports have always had it. Lengths are those of 16-bit counts: a
// longer text throws Failure.

namespace sondrel {

QString keywordAdvice(const QString &keywords);
QString descriptionAdvice(const QString &description);
QString titleAdvice(const QString &title);
/// For a page of so many words, as they are counted.
QString contentsAdvice(qint32 words);
/// What a frameset page is told beside its contents.
QString frameWarning();
/// The addresses of a frameset page's frames.
QString frameAdvice(const QStringList &urls);

/// The number as a 16-bit count; throws Failure beyond its range.
qint16 shortCount(qsizetype count);

} // namespace sondrel
