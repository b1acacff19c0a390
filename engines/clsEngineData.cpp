#include "engines/clsEngineData.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

const std::vector<EngineDataKey> &engineDataKeys()
{
    using E = clsEngineData;
    static const std::vector<EngineDataKey> keys{
        {&E::EngineKey, u"EngineKey"_s, u"EngineKey="_s},
        {&E::EngineURL, u"EngineURL"_s, u"EngineURL ="_s},
        {&E::QueryKeyword1, u"QueryKeyword1"_s, u"QueryKeyword1 ="_s},
        {&E::QueryKeyword2, u"QueryKeyword2"_s, u"QueryKeyword2="_s},
        {&E::PostString, u"PostString"_s, u"PostString ="_s},
        {&E::SubmitMethod, u"SubmitMethod"_s, u"SubmitMethod ="_s},
        {&E::ResultStartString, u"ResultStartString"_s, u"ResultStartString ="_s},
        {&E::ResultEndString, u"ResultEndString"_s, u"ResultEndString ="_s},
        {&E::Sectionstart, u"Sectionstart"_s, u"Sectionstart="_s},
        {&E::SectionEnd, u"SectionEnd"_s, u"SectionEnd="_s},
        {&E::beginTitle, u"beginTitle"_s, u"beginTitle ="_s},
        {&E::endTitle, u"endTitle"_s, u"endTitle ="_s},
        {&E::NextPage1, u"NextPage1"_s, u"NextPage1 ="_s},
        {&E::NextPage2, u"NextPage2"_s, u"NextPage2 ="_s},
        {&E::NextPage3, u"NextPage3"_s, u"NextPage3 ="_s},
        {&E::NextPage4, u"NextPage4"_s, u"NextPage4 ="_s},
        {&E::beginURL, u"beginURL"_s, u"beginURL ="_s},
        {&E::endURL, u"endURL"_s, u"endURL ="_s},
        {&E::beginMatches, u"beginMatches"_s, u"beginMatches ="_s},
        {&E::endMatches, u"endMatches"_s, u"endMatches ="_s},
    };
    return keys;
}

} // namespace sondrel
