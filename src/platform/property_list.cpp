#include "platform/property_list.h"

#include <plist/plist.h>

#include <QDateTime>
#include <QFile>
#include <QTimeZone>

#include <cstdlib>
#include <memory>

namespace tarnbeck {
namespace {

// Seconds between 1970 and 2001, the epoch of plist dates.
constexpr qint64 kPlistEpochOffset = 978307200;

struct PlistFree {
  void operator()(void* node) const { plist_free(static_cast<plist_t>(node)); }
};
using PlistPtr = std::unique_ptr<void, PlistFree>;

QVariant toVariant(plist_t node) {
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      uint8_t value = 0;
      plist_get_bool_val(node, &value);
      return QVariant(value != 0);
    }
    case PLIST_UINT: {
      uint64_t value = 0;
      plist_get_uint_val(node, &value);
      return QVariant::fromValue<quint64>(value);
    }
    case PLIST_REAL: {
      double value = 0;
      plist_get_real_val(node, &value);
      return QVariant(value);
    }
    case PLIST_STRING: {
      char* value = nullptr;
      plist_get_string_val(node, &value);
      QString text = QString::fromUtf8(value ? value : "");
      std::free(value);
      return QVariant(text);
    }
    case PLIST_ARRAY: {
      QVariantList list;
      for (uint32_t i = 0; i < plist_array_get_size(node); ++i) list << toVariant(plist_array_get_item(node, i));
      return QVariant(list);
    }
    case PLIST_DICT: {
      QVariantMap map;
      plist_dict_iter iter = nullptr;
      plist_dict_new_iter(node, &iter);
      for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, iter, &key, &value);
        if (!value) {
          std::free(key);
          break;
        }
        map.insert(QString::fromUtf8(key), toVariant(value));
        std::free(key);
      }
      std::free(iter);
      return QVariant(map);
    }
    case PLIST_DATE: {
      int32_t sec = 0, usec = 0;
      plist_get_date_val(node, &sec, &usec);
      return QVariant(QDateTime::fromMSecsSinceEpoch((kPlistEpochOffset + sec) * 1000 + usec / 1000, QTimeZone::utc()));
    }
    case PLIST_DATA: {
      char* bytes = nullptr;
      uint64_t length = 0;
      plist_get_data_val(node, &bytes, &length);
      QByteArray data(bytes, static_cast<qsizetype>(length));
      std::free(bytes);
      return QVariant(data);
    }
    case PLIST_UID: {
      uint64_t value = 0;
      plist_get_uid_val(node, &value);
      return QVariant::fromValue<quint64>(value);
    }
    default:
      return QVariant();
  }
}

plist_t fromVariant(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
      return plist_new_bool(value.toBool() ? 1 : 0);
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Long:
    case QMetaType::ULong:
      return plist_new_uint(value.toULongLong());
    case QMetaType::Double:
    case QMetaType::Float:
      return plist_new_real(value.toDouble());
    case QMetaType::QByteArray: {
      const QByteArray data = value.toByteArray();
      return plist_new_data(data.constData(), static_cast<uint64_t>(data.size()));
    }
    case QMetaType::QDateTime: {
      const qint64 ms = value.toDateTime().toMSecsSinceEpoch() - kPlistEpochOffset * 1000;
      return plist_new_date(static_cast<int32_t>(ms / 1000), static_cast<int32_t>((ms % 1000) * 1000));
    }
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
      plist_t array = plist_new_array();
      for (const QVariant& item : value.toList()) plist_array_append_item(array, fromVariant(item));
      return array;
    }
    case QMetaType::QVariantMap: {
      plist_t dict = plist_new_dict();
      const QVariantMap map = value.toMap();
      for (auto it = map.begin(); it != map.end(); ++it) {
        plist_dict_set_item(dict, it.key().toUtf8().constData(), fromVariant(it.value()));
      }
      return dict;
    }
    default:
      return plist_new_string(value.toString().toUtf8().constData());
  }
}

}  // namespace

std::optional<QVariantMap> readPlistDictionary(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray bytes = file.readAll();
  if (bytes.isEmpty()) return std::nullopt;
  plist_t root = nullptr;
  // libplist 2.2 reports no errors: a failed parse leaves the root null.
  plist_from_memory(bytes.constData(), static_cast<uint32_t>(bytes.size()), &root);
  if (!root) return std::nullopt;
  PlistPtr owner(root);
  if (plist_get_node_type(root) != PLIST_DICT) return std::nullopt;
  return toVariant(root).toMap();
}

QByteArray xmlPlistText(const QVariantMap& dictionary) {
  PlistPtr root(fromVariant(QVariant(dictionary)));
  char* xml = nullptr;
  uint32_t length = 0;
  plist_to_xml(static_cast<plist_t>(root.get()), &xml, &length);
  if (!xml) return QByteArray();
  QByteArray text(xml, static_cast<qsizetype>(length));
  plist_to_xml_free(xml);
  return text;
}

bool writeXmlPlist(const QString& path, const QVariantMap& dictionary) {
  const QByteArray text = xmlPlistText(dictionary);
  if (text.isEmpty()) return false;
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
  return file.write(text) == text.size();
}

}  // namespace tarnbeck
