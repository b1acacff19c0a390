// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>

#include <random>

namespace sondrel {

/// Bytes drawn from an alphabet.
inline QByteArray randomBytes(std::mt19937 &random, QByteArrayView alphabet, qsizetype size)
{
    QByteArray result(size, Qt::Uninitialized);
    for (char &byte : result)
        byte = alphabet[static_cast<qsizetype>(random() % static_cast<unsigned>(alphabet.size()))];
    return result;
}

} // namespace sondrel
