#include "optimizer/modHTMLParse.h"

#include "core/modUtilit.h"
#include "core/text_fold.h"

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr QStringView ScriptEnd = u"</script>";
constexpr QStringView ScriptTag = u"<script";

// The content of an attribute, from its name on: behind "=", without the quotation marks round it.
QStringView contentOf(QStringView attribute)
{
    const qsizetype equals = attribute.indexOf(u'=');
    if (equals >= 0)
        attribute = trimBlanks(attribute.sliced(equals + 1));
    if (attribute.startsWith(u'"'))
        attribute = attribute.sliced(1);
    if (attribute.endsWith(u'"'))
        attribute.chop(1);
    return attribute;
}

// Where a tag stands at or behind from, told by how it begins in small letters; -1 for none.
qsizetype indexOfTag(QStringView html, QStringView tag, qsizetype from = 0)
{
    qsizetype open = html.indexOf(u'<', from);
    while (open >= 0 && !startsWithIgnoringCase(html.sliced(open), tag))
        open = html.indexOf(u'<', open + 1);
    return open;
}

// One walk over the tags of a page.
class TagScan
{
public:
    TagScan(QStringView html, MetaTags &tags) : m_html(html), m_tags(tags) {}

    void run()
    {
        qsizetype open = nextTag();
        while (open >= 0) {
            if (startsWithIgnoringCase(m_html.sliced(open), ScriptTag)) {
                skipScript(open);
                open = nextTag();
                continue;
            }
            const qsizetype close = m_html.indexOf(u'>', open + 1);
            if (close < 0)
                return;
            takeTag(open + 1, close);
            m_work = close + 1;
            // All at once: what grows by and by is copied again and again.
            if (m_inBody && m_tags.body.isNull())
                m_tags.body.reserve(m_html.size() - m_work);
            open = nextTag();
            if (open >= 0 && m_inBody)
                m_tags.body += m_html.sliced(m_work, open - m_work);
        }
    }

private:
    qsizetype nextTag() const { return m_html.indexOf(u'<', m_work); }

    void skipScript(qsizetype open)
    {
        const qsizetype end = m_scriptEnds ? indexOfTag(m_html, ScriptEnd, open + ScriptTag.size()) : -1;
        if (end >= 0) {
            m_work = end + ScriptEnd.size();
            return;
        }
        // A script without an end costs eight characters at a time until its tag is gone. Nor does any later
        // one have an end, so that it need not be looked for again.
        m_scriptEnds = false;
        constexpr qsizetype Step = 8;
        m_work = std::min(m_work + Step * ((open - m_work) / Step + 1), m_html.size());
    }

    void takeTag(qsizetype begin, qsizetype end)
    {
        if (m_inBody)
            return;
        const QString tag = folded(m_html.sliced(begin, end - begin));
        m_inBody = tag == u"/head" || tag.startsWith(u"body");
        if (m_inBody || !tag.contains(u"meta"_s))
            return;
        if (tag.contains(u"description"_s) || tag.contains(u"keywords"_s))
            takeMeta(begin, tag);
    }

    void takeMeta(qsizetype begin, QStringView tag)
    {
        // A tag without content repeats what the one before it said.
        if (const qsizetype content = tag.indexOf(u"content"_s); content >= 0) {
            m_namesKeywords = tag.first(content).contains(u"keywords"_s);
            m_value = contentOf(m_html.sliced(begin, tag.size()).sliced(content));
        }
        (m_namesKeywords ? m_tags.keywords : m_tags.description) = m_value.toString();
    }

    QStringView m_html;
    MetaTags &m_tags;
    qsizetype m_work = 0; // what stands before it is done with
    bool m_scriptEnds = true;
    bool m_inBody = false;
    bool m_namesKeywords = false;
    QStringView m_value;
};

// What is replaced does not get longer, so that a body of any size is cleaned where it stands, without a
// copy.
template <typename Step>
void rewrite(QString &body, Step step)
{
    QChar *const begin = body.data();
    const QStringView text(begin, body.size());
    qsizetype to = 0;
    for (qsizetype from = 0; from < text.size();)
        from += step(text.sliced(from), begin[to++]);
    body.truncate(to);
}

void replaceEntitiesAndTabs(QString &body)
{
    constexpr QStringView Quote = u"&quot;";
    constexpr QStringView Blank = u"&nbsp;";
    rewrite(body, [&](QStringView rest, QChar &out) -> qsizetype {
        const QChar unit = rest.front();
        if (unit == u'&' && startsWithIgnoringCase(rest, Quote)) {
            out = u'"';
            return Quote.size();
        }
        if (unit == u'&' && startsWithIgnoringCase(rest, Blank)) {
            out = u' ';
            return Blank.size();
        }
        out = unit == u'\t' ? QChar(u' ') : unit;
        return 1;
    });
}

void halveBlanks(QString &body)
{
    rewrite(body, [](QStringView rest, QChar &out) -> qsizetype {
        out = rest.front();
        return out == u' ' && rest.size() > 1 && rest[1] == u' ' ? 2 : 1;
    });
}

QString cleanBody(QString body)
{
    replaceEntitiesAndTabs(body);
    body = CollapseSpaces(std::move(body));
    halveBlanks(body);
    body.truncate(trimBlanksRight(body).size());
    body.remove(0, body.size() - trimBlanksLeft(body).size());
    return body;
}

QString titleOf(QStringView html)
{
    constexpr QStringView Begin = u"<title>";
    const qsizetype begin = indexOfTag(html, Begin);
    const qsizetype end = indexOfTag(html, u"</title>");
    if (begin < 0 || end < 0)
        return {};
    if (end < begin)
        throw Failure(u"The title ends before it begins"_s);
    return CollapseSpaces(html.sliced(begin + Begin.size(), end - begin - Begin.size()).toString());
}

void readTags(const QString &html, MetaTags &tags)
{
    TagScan(html, tags).run();
    tags.body = cleanBody(std::move(tags.body));
    tags.title = titleOf(html);
}

} // namespace

MetaTags retrieveMetaTag(ApplicationContext &app, const QString &html)
{
    MetaTags tags;
    reportFailure(app, u"modHTMLParse_retrieveMetaTag error: "_s, [&] { readTags(html, tags); });
    return tags;
}

} // namespace sondrel
