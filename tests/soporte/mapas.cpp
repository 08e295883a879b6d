#include "soporte/mapas.h"

#include "common/errorejecucion.h"
#include "engine/lang/resolve.h"

namespace {

using Fila = TablaDeMapas::Fila;
using lang::Expr;
using lang::Op;

int compara(const Variant& a, const Variant& b) {
  return a.number() < b.number() ? -1 : a.number() > b.number();
}

// A query over one table, row by row.
class LectorDeMapas : public Reader {
 public:
  LectorDeMapas(Mapas& mapas, const lang::Query& query)
      : mapas_(mapas), donde_(query.where), orden_(query.orderBy) {
    if (!lang::hasKeys(query)) throw ErrorEjecucion(err::kErrorDeSintaxis, "mapas");
    tabla_ = *query.from->source.table;
    for (const lang::Output& salida : query.outputs) salidas_.push_back(salida.expr);
  }

  std::unique_ptr<Cursor> run(const QList<Variant>& literals) override {
    auto filas = std::make_unique<Filas>();
    rows(keys(literals, -1), [&](Key, Row&& fila) { filas->filas.push_back(std::move(fila)); });
    return filas;
  }

  std::vector<Key> keys(const QList<Variant>& literals, int most) override {
    mapas_.pasa(Mapas::Paso::Leer);
    std::vector<std::pair<Key, const Fila*>> halladas;
    for (const auto& [clave, fila] : mapas_.tablas[tabla_.name].filas)
      if (!donde_ || valor(*donde_, fila, literals).toBool()) halladas.emplace_back(clave, &fila);
    std::stable_sort(halladas.begin(), halladas.end(), [&](const auto& a, const auto& b) {
      for (const lang::Order& orden : orden_) {
        const int c = compara(valor(*orden.expr, *a.second, literals),
                              valor(*orden.expr, *b.second, literals));
        if (c != 0) return orden.descending ? c > 0 : c < 0;
      }
      return false;
    });
    std::vector<Key> claves;
    for (const auto& hallada : halladas) claves.push_back(hallada.first);
    if (most >= 0 && static_cast<int>(claves.size()) > most)
      claves.resize(static_cast<size_t>(most));
    return claves;
  }

  void rows(std::span<const Key> keys, const RowTaker& take) override {
    mapas_.pasa(Mapas::Paso::Leer);
    const auto& filas = mapas_.tablas[tabla_.name].filas;
    for (const Key clave : keys) {
      const auto hallada = filas.find(clave);
      if (hallada == filas.end()) continue;
      Row fila;
      for (const lang::ExprPtr& salida : salidas_)
        fila.push_back(valor(*salida, hallada->second, {}));
      take(clave, std::move(fila));
    }
  }

 private:
  struct Filas : Cursor {
    bool next() override { return ++actual <= filas.size(); }
    Variant value(int column) const override {
      return filas[actual - 1][static_cast<size_t>(column)];
    }
    std::vector<Row> filas;
    std::size_t actual = 0;
  };

  Variant valor(const Expr& expr, const Fila& fila, const QList<Variant>& literales) const {
    const auto parte = [&](size_t i) { return valor(*expr.args[i], fila, literales); };
    switch (expr.kind) {
      case Expr::Kind::Column:
        return fila.value(tabla_.columns[static_cast<size_t>(expr.column)].name);
      case Expr::Kind::Literal:
        return expr.place == Expr::Place::Statement ? literales[expr.parameter] : expr.value;
      case Expr::Kind::Binary:
        break;
      default:
        throw ErrorEjecucion(err::kErrorDeSintaxis, "mapas");
    }
    if (expr.op == Op::And) return parte(0).toBool() && parte(1).toBool();
    const int c = compara(parte(0), parte(1));
    return (expr.op == Op::Equal && c == 0) || (expr.op == Op::Less && c < 0) ||
           (expr.op == Op::Greater && c > 0);
  }

  Mapas& mapas_;
  Catalog::Table tabla_;
  lang::ExprPtr donde_;
  std::vector<lang::Order> orden_;
  std::vector<lang::ExprPtr> salidas_;
};

class AlmacenDeMapas : public Store {
 public:
  explicit AlmacenDeMapas(std::shared_ptr<Mapas> mapas) : mapas_(std::move(mapas)) {}

  std::shared_ptr<const Definitions> definitions() override { return mapas_->definiciones; }
  void define(const Change& change) override {
    auto nuevas = std::make_shared<Definitions>(*mapas_->definiciones);
    if (const auto* tabla = std::get_if<TableMade>(&change)) nuevas->add(tabla->table);
    if (const auto* consulta = std::get_if<QueryMade>(&change)) nuevas->add(consulta->query);
    mapas_->definiciones = std::move(nuevas);
  }
  std::shared_ptr<Reader> compile(const lang::Query& query) override {
    return std::make_shared<LectorDeMapas>(*mapas_, query);
  }
  Stamp stamp(const QStringList&) override { return {{mapas_->cambios, 0, 0}}; }
  std::unique_ptr<Hold> hold() override { return std::make_unique<Hold>(); }

  void begin(Doing) override {
    if (mapas_->enGrupo) return;
    mapas_->pasa(Mapas::Paso::Abrir);
    mapas_->antesDelGrupo = mapas_->tablas;
    mapas_->enGrupo = true;
  }
  void commit() override {
    if (!mapas_->enGrupo) return;
    mapas_->pasa(Mapas::Paso::Confirmar);
    mapas_->enGrupo = false;
  }
  void discard() override { mapas_->deshaz(); }
  bool inGroup() const override { return mapas_->enGrupo; }

  Key insert(const QString& table, const Values& values) override {
    mapas_->pasa(Mapas::Paso::Escribir);
    Fila fila;
    for (const Field& campo : mapas_->definiciones->definition(table)->Fields)
      fila.insert(campo.Name, defaultValue(campo));
    for (const auto& [columna, valor] : values) fila.insert(columna, valor);
    comprueba(table, 0, fila);
    TablaDeMapas& tabla = mapas_->tablas[table];
    tabla.filas[++tabla.ultima] = fila;
    ++mapas_->cambios;
    return tabla.ultima;
  }
  bool update(const QString& table, Key key, const Values& values) override {
    mapas_->pasa(Mapas::Paso::Escribir);
    auto& filas = mapas_->tablas[table].filas;
    const auto hallada = filas.find(key);
    if (hallada == filas.end()) return false;
    Fila fila = hallada->second;
    for (const auto& [columna, valor] : values) fila.insert(columna, valor);
    comprueba(table, key, fila);
    hallada->second = fila;
    ++mapas_->cambios;
    return true;
  }
  bool remove(const QString& table, Key key) override {
    mapas_->pasa(Mapas::Paso::Escribir);
    ++mapas_->cambios;
    return mapas_->tablas[table].filas.erase(key) > 0;
  }

 private:
  // Keys of one column.
  void comprueba(const QString& tabla, Key propia, const Fila& fila) {
    const QString clave = mapas_->definiciones->primaryColumns(tabla).value(0);
    if (clave.isEmpty()) return;
    if (fila.value(clave).isNull()) throw ErrorEjecucion(err::kClaveNula, clave);
    for (const auto& [otra, valores] : mapas_->tablas[tabla].filas)
      if (otra != propia && compara(valores.value(clave), fila.value(clave)) == 0)
        throw ErrorEjecucion(err::kClaveDuplicada);
  }

  std::shared_ptr<Mapas> mapas_;
};

class ConductorDeMapas : public Driver {
 public:
  explicit ConductorDeMapas(std::shared_ptr<Mapas> mapas) : mapas_(std::move(mapas)) {}
  QString identity(const QString&) const override { return QStringLiteral("mapas"); }
  std::unique_ptr<Store> open(const QString&, std::shared_ptr<StoreSettings> settings) override {
    mapas_->ajustes = std::move(settings);
    return std::make_unique<AlmacenDeMapas>(mapas_);
  }
  void create(const QString&, const QString&) override {}
  void erase(const QString&) override { mapas_->tablas.clear(); }
  QStringList files(const QString&) const override { return {}; }
  void copy(Store&, const QString&) override {}
  std::unique_ptr<Snapshot> snapshot(Store&) override { return nullptr; }
  void overwrite(Store&, Store&, std::optional<qint64>) override {}
  void compact(Store&, const QString&) override {}
  void check(Store&) override {}

 private:
  std::shared_ptr<Mapas> mapas_;
};

}  // namespace

void Mapas::niega(int llamada, int numero) {
  faltan_ = llamada;
  numero_ = numero;
  negada_ = false;
}

void Mapas::pasa(Paso paso) {
  const bool puede = numero_ == err::kErrorDeDisco ||
                     (numero_ == err::kNoSePuedeGuardar && paso == Paso::Confirmar) ||
                     (numero_ == err::kRegistroBloqueado &&
                      (paso == Paso::Abrir || (paso == Paso::Leer && !enGrupo)));
  if (!puede || faltan_ == 0 || --faltan_ > 0) return;
  negada_ = true;
  if (numero_ == err::kErrorDeDisco) deshaz();
  throw ErrorEjecucion(numero_);
}

void Mapas::deshaz() {
  if (!enGrupo) return;
  // A key is never used twice, not even that of a row that was undone.
  for (auto& [nombre, tabla] : antesDelGrupo) tabla.ultima = tablas[nombre].ultima;
  tablas = antesDelGrupo;
  enGrupo = false;
  ++cambios;
  if (ajustes->undone) ajustes->undone();
}

std::unique_ptr<Driver> conductorDeMapas(std::shared_ptr<Mapas> mapas) {
  return std::make_unique<ConductorDeMapas>(std::move(mapas));
}
