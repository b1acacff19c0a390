// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

#include <vector>

namespace sondrel {

/// A search engine of the user's own, as the Engine Builder edits it. The other fields of the catalogue have
/// no place here, and are lost when the file is written.
class clsEngineData
{
public:
    QString Market;
    QString EngineName;
    QString EngineKey;
    QString EngineURL;
    QString QueryKeyword1;
    QString QueryKeyword2; // kept as it was loaded
    QString PostString;
    QString SubmitMethod;
    QString ResultStartString;
    QString ResultEndString;
    QString Sectionstart;
    QString SectionEnd;
    QString beginTitle;
    QString endTitle;
    QString NextPage1;
    QString NextPage2;
    QString NextPage3;
    QString NextPage4;
    QString beginURL;
    QString endURL;
    QString beginMatches;
    QString endMatches;

    bool operator==(const clsEngineData &) const = default;
};

/// A field that stands in the engine's section: its key, and how the key is written there.
struct EngineDataKey
{
    QString clsEngineData::*field;
    QString key;
    QString written; // with "=", in front of which some keys have a blank
};

/// These fields in the order in which they are written.
const std::vector<EngineDataKey> &engineDataKeys();

} // namespace sondrel
