// A table of reckoned rows on screen: a worksheet, a list of third parties, the data of registers.
//
// The form tells how many rows there are and what each cell shows; cells that can be typed hand
// their text back. In a .ui file it is a QTableView promoted to TablaHoja.
#pragma once

#include <functional>
#include <QTableView>
#include <vector>

class Formulario;
struct Contexto;

struct ColumnaHojaPantalla {
  QString titulo;
  int ancho = 10;  // in digits
  bool derecha = false;
  QString ayuda = {};
};

class TablaHoja : public QTableView {
  Q_OBJECT
 public:
  explicit TablaHoja(QWidget* padre = nullptr);
  ~TablaHoja() override;

  struct Fuente {
    std::function<int()> filas;
    std::function<QString(int fila, int columna)> texto;
    // Optional: which cells can be typed, what to do with what was typed (whatever it raises is
    // shown by the form, and the cell stays as it was), and which cells stand out.
    std::function<bool(int fila, int columna)> editable = {};
    std::function<void(int fila, int columna, const QString& texto)> escribe = {};
    std::function<bool(int fila, int columna)> resalta = {};
    std::function<bool(int fila, int columna)> avisa = {};
  };
  void enlazar(std::vector<ColumnaHojaPantalla> columnas, Fuente fuente);
  // All cells are asked anew; the current row stays if there still is one.
  void refresca();
  // The same while the rows are the same: only what they show has changed.
  void repinta();

  int fila() const { return currentIndex().row(); }
  void irA(int fila, int columna = 0);
  QString textoDe(int fila, int columna) const;
  // Ends the cell being typed, taking it over.
  void cierraCelda();

  QSize sizeHint() const override;

 Q_SIGNALS:
  void intro(int fila);
  void filaCambiada(int fila);

 protected:
  void keyPressEvent(QKeyEvent* evento) override;
  void currentChanged(const QModelIndex& actual, const QModelIndex& anterior) override;

 private:
  class Modelo;
  Modelo* modelo_;
};

// Saves what was typed into a cell of a form's table, once the editor has gone. What can't be saved
// is told; given up, the form reads its rows anew.
void guardaCelda(Formulario& forma, Contexto& contexto, std::function<void()> relee);
