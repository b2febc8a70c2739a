#include "site/site_model.h"

#include "WidgetKit/high_dpi_svg_icon.h"

namespace TarnClient {

namespace {

const char kTreeIcons[] = ":/Bolt/Public/TreePublic/Images/Public/TreePublic/";
const char kOwnIcons[] = ":/TarnHost/icons/";

QIcon Icon(const char* name, const char* folder_of_selected) {
  const QString normal = QLatin1String(kTreeIcons) + QLatin1String(name);
  const QString selected = QLatin1String(folder_of_selected) + QLatin1String(name);
  return WidgetKit::GetHighDpiSvgIcon(normal + QStringLiteral(".svg"), selected + QStringLiteral("_sel.svg"),
                                      QSize(20, 20));
}

}  // namespace

CSiteModel::CSiteModel(QObject* parent)
    : QAbstractItemModel(parent),
      region_icon_(Icon("tree_main_group", kTreeIcons)),
      camera_icon_(Icon("tree_main_camera", kOwnIcons)) {}

void CSiteModel::SetRows(std::shared_ptr<const SiteRows> rows) {
  beginResetModel();
  rows_ = std::move(rows);
  endResetModel();
}

const SiteRow* CSiteModel::RowOf(const QModelIndex& index) const {
  if (!index.isValid() || index.model() != this) {
    return nullptr;
  }
  return &rows_->rows[static_cast<size_t>(index.internalId())];
}

QModelIndex CSiteModel::IndexOf(const std::string& code, bool is_region) const {
  for (size_t place = 0; place < rows_->rows.size(); ++place) {
    if (rows_->rows[place].is_region == is_region && rows_->rows[place].code == code) {
      return IndexAt(static_cast<int>(place));
    }
  }
  return {};
}

QModelIndex CSiteModel::IndexAt(int place, int column) const {
  return createIndex(rows_->rows[static_cast<size_t>(place)].row, column, static_cast<quintptr>(place));
}

const std::vector<int>& CSiteModel::ChildrenOf(const QModelIndex& parent) const {
  const SiteRow* row = RowOf(parent);
  return row ? row->children : rows_->top;
}

QModelIndex CSiteModel::index(int row, int column, const QModelIndex& parent) const {
  if (!hasIndex(row, column, parent)) {
    return {};
  }
  return IndexAt(ChildrenOf(parent)[static_cast<size_t>(row)], column);
}

QModelIndex CSiteModel::parent(const QModelIndex& child) const {
  const SiteRow* row = RowOf(child);
  if (!row || row->parent < 0) {
    return {};
  }
  return IndexAt(row->parent);
}

int CSiteModel::rowCount(const QModelIndex& parent) const {
  return parent.column() > 0 ? 0 : static_cast<int>(ChildrenOf(parent).size());
}

int CSiteModel::columnCount(const QModelIndex&) const {
  return kColumnCount;
}

QVariant CSiteModel::Text(const SiteRow& row, int column) const {
  switch (column) {
    case kName:
      return row.name;
    case kMain:
      return row.main;
    case kSub:
      return row.sub;
    case kUser:
      return row.user;
    default:
      return {};
  }
}

QVariant CSiteModel::data(const QModelIndex& index, int role) const {
  const SiteRow* row = RowOf(index);
  if (!row) {
    return {};
  }
  switch (role) {
    case Qt::DecorationRole:
      if (index.column() != kName) {
        return {};
      }
      return row->is_region ? region_icon_ : camera_icon_;
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
      return Text(*row, index.column());
    case Qt::AccessibleTextRole:
      if (index.column() == kName && row->is_region) {
        return tr("region %1").arg(row->name);
      }
      return Text(*row, index.column());
    default:
      return {};
  }
}

QVariant CSiteModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
    return {};
  }
  switch (section) {
    case kName:
      return tr("Name");
    case kMain:
      return tr("Main stream");
    case kSub:
      return tr("Sub stream");
    case kUser:
      return tr("User");
    default:
      return {};
  }
}

}  // namespace TarnClient
