#include "shell/listing_model.h"

#include "core/clsCodePage.h"
#include "core/modCommon.h"
#include "core/text_fold.h"
#include "shell/plain_tip.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

std::vector<ListingOwner> listingOwners(ApplicationContext &app, const std::vector<Listing> &listings,
                                        const Collection<clsURL> *tracked)
{
    std::vector<ListingOwner> owners(listings.size(), ListingOwner::Nobody);
    if (!tracked)
        return owners;
    for (std::size_t i = 0; i < listings.size(); ++i) {
        const QString url = trimBlanks(listings[i].URL).toString();
        if (url.isEmpty())
            continue;
        for (const clsURL &entry : *tracked) {
            if (CompareURL(app, url, trimBlanks(entry.URL).toString()))
                owners[i] = entry.IsCompetitor ? ListingOwner::Competitor : ListingOwner::Own;
        }
    }
    return owners;
}

QString shownTitle(ApplicationContext &app, const QString &engineName, const QString &stored)
{
    constexpr int SimplifiedChinese = 936;
    QString title = shownText(app, stored);
    if (title == stored && equalsIgnoringCase(engineName, u"Google(CN)"))
        title = clsCodePage(app).CovertToWideChar(stored, SimplifiedChinese);
    return title;
}

ListingModel::ListingModel(ApplicationContext &app, QObject *parent) : QAbstractTableModel(parent), m_app(app)
{
}

void ListingModel::setListings(std::vector<Listing> listings, const QString &engineName)
{
    beginResetModel();
    m_engineName = engineName;
    m_listings = std::move(listings);
    m_owners.assign(m_listings.size(), ListingOwner::Nobody);
    endResetModel();
}

void ListingModel::HightLightResultURL(const Collection<clsURL> *tracked)
{
    reportFailure(m_app, u"frmSondrel_HightLightResultURL: "_s, [&] {
        m_owners = listingOwners(m_app, m_listings, tracked);
        if (!m_listings.empty())
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    });
}

int ListingModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_listings.size());
}

int ListingModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ListingModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto row = static_cast<std::size_t>(index.row());
    const Listing &listing = m_listings[row];
    if (role == OwnerRole)
        return QVariant::fromValue(m_owners[row]);
    if (role == Qt::TextAlignmentRole && index.column() == Number)
        return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole && index.column() != Number)
        return plainTip(data(index, Qt::DisplayRole).toString());
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Number:
        return QString::number(index.row() + 1);
    case Title:
        return shownTitle(m_app, m_engineName, listing.Title);
    default:
        return shownText(m_app, listing.URL);
    }
}

QVariant ListingModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignVCenter | (section == Number ? Qt::AlignRight : Qt::AlignLeft));
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Number ? u"#"_s : section == Title ? u"Title"_s : u"URL"_s;
}

} // namespace sondrel
