#include "engine/tabledef.h"

namespace {

// A text default is written between double quotes, doubled inside.
QString plainText(const QString& written) {
  if (written.size() < 2 || !written.startsWith(u'"') || !written.endsWith(u'"')) return written;
  return written.mid(1, written.size() - 2).replace(QStringLiteral("\"\""), QStringLiteral("\""));
}

}  // namespace

Field& TableDef::CreateField(const QString& name, FieldType type, int size) {
  ::Field field;
  field.Name = name;
  field.Type = type;
  field.Size = size;
  Fields.push_back(field);
  return Fields.back();
}

Variant defaultValue(const Field& field) {
  // A yes/no is one or the other from the start, never Null.
  if (field.DefaultValue.isEmpty())
    return field.Type == FieldType::Boolean ? Variant(false) : Variant();
  bool isNumber = false;
  const double number = field.DefaultValue.toDouble(&isNumber);
  return convertTo(field.Type, field.Size,
                   isNumber ? Variant(number) : Variant(plainText(field.DefaultValue)));
}
