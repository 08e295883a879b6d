// The grid of the program: the rows of a Data control, with the current row shared by both.
//
// The columns are given as data. Moving in the grid moves the recordset, and any move of the
// recordset moves the grid. Only the cells on show are read, so a journal of a million lines is
// shown at once. In a .ui file it is a QTableView promoted to Rejilla, header "toolkit/rejilla.h".
//
// What is highlighted is the recordset's current row, or nothing is: a row that was deleted under
// the recordset leaves none current until the next move, which goes on from its place.
#pragma once

#include <functional>
#include <QTableView>
#include <vector>

#include "common/variant.h"

class DataControl;
class QAbstractButton;
class ModeloRejilla;

struct Columna {
  enum class Tipo { Texto, Importe, Fecha, SiNo, Numero };

  QString campo;   // name of the column in the source
  QString titulo;  // the header
  int ancho = 10;  // in digits of the grid's font; the last column stretches
  Tipo tipo = Tipo::Texto;
  QString mascara = {};  // of an amount; empty for the grid's own (setMascara)
  bool editable = true;  // only in a grid that edits
  double maximo = 0;     // of what is typed, from 0 on, which is otherwise refused (6); 0 for none
};

class Rejilla : public QTableView {
  Q_OBJECT
 public:
  explicit Rejilla(QWidget* padre = nullptr);
  ~Rejilla() override;

  // Shows the rows of `datos`, now and after each Refresh of it. A column that the source hasn't
  // got stays empty. Amounts and numbers stand at the right, the decimals of a column under each
  // other; an amount that is Null or an empty text shows nothing.
  void enlazar(DataControl& datos, std::vector<Columna> columnas);
  // The mask of the amount columns without one of their own: the company's.
  void setMascara(const QString& mascara);

  // Editing in place. What is typed in a cell of a row is written when the cell is left; if the
  // engine refuses it, the refusal is shown and the cell goes back to what it was. With `altas` an
  // empty row stands at the end: it is written when another row or another control is entered, and
  // if it is refused it stays as typed, to be put right or dropped with Escape. With `bajas` Supr
  // deletes the current row; without it, it empties the cell. An emptied cell is Null.
  enum Cambio { Cambios = 1, Altas = 2, Bajas = 4 };
  void permitirEdicion(int cambios);
  // Writes the cell being typed and the row being added, if any; false if one was refused.
  bool guardarFila();

  // The text of a column in the current row, as the recordset has it at this moment; empty without
  // a current row.
  QString valor(const QString& campo) const;

  // What is on show follows the recordset when control returns to the event loop; who can't wait
  // for that takes it over at once, all rows of it.
  Rejilla& alDia();
  QString textoDeCelda() const;  // under the cursor
  int filas() const;             // on show, without the empty one of additions
  int filaActual() const;        // -1 when there is none
  QString texto(int fila, int columna) const;

  // Scrolls so that the current row is the first on show: what follows a hit is seen with it.
  void subeActual();
  // Makes another row current, as its key does; nothing where there is none.
  enum Movimiento { Primera, Anterior, Siguiente, Ultima };
  void mover(Movimiento movimiento);

  // Each column takes the width of a button that stands over it; `reparto` gives for each column
  // its button, and a button given twice is shared out by halves.
  void alinearCon(const std::vector<QWidget*>& reparto);

  // With shift held, the left button drags the text of the cell (see Formulario::aceptaArrastre).
  void permitirArrastre(bool si) { arrastre_ = si; }
  static const char* const kTipoArrastre;  // the mime type of what is dragged

  QSize sizeHint() const override;

 Q_SIGNALS:
  void dobleClic();
  void intro();                             // Enter, with no cell being edited
  void mas();                               // "+"
  void espacio();                           // the space bar
  void botonDerecho(const QPoint& global);  // the row under it is current by then
  void editorAbierto(QWidget* editor);      // on a cell
  void filaCambiada();                      // by the user or by the recordset

 protected:
  void keyPressEvent(QKeyEvent* evento) override;
  // Typing doesn't search: it would read all rows.
  void keyboardSearch(const QString&) override {}
  void mousePressEvent(QMouseEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void mouseDoubleClickEvent(QMouseEvent* evento) override;
  void contextMenuEvent(QContextMenuEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;
  bool viewportEvent(QEvent* evento) override;  // a text that is cut is told whole
  void changeEvent(QEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;
  bool eventFilter(QObject* objeto, QEvent* evento) override;
  // Whole lines only, at the top and at the end: the room left over stays empty.
  void updateGeometries() override;
  void currentChanged(const QModelIndex& actual, const QModelIndex& anterior) override;
  // Home and End are those of the lines; in a grid that edits, of the cells of a line.
  QModelIndex moveCursor(CursorAction accion, Qt::KeyboardModifiers teclas) override;
  bool edit(const QModelIndex& indice, EditTrigger motivo, QEvent* evento) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint motivo) override;

 private:
  void aplazarSincronia();
  void sincronizar();
  void leerTodas();
  void leerResto();  // the rows after the first ones, once these are painted
  void recolocar(int columna);
  void cederTexto();
  void irA(int fila);  // the recordset goes there; if it can't, the grid comes back
  QModelIndex destino(Movimiento movimiento);
  int anchoDe(const Columna& columna) const;
  void ajustarAnchos();
  void alCambiarFoco(QWidget* antes, QWidget* ahora);
  bool tratarTecla(QKeyEvent& evento);
  void borrarFila();
  void mostrarFallo();
  void protege(const std::function<void()>& accion);

  ModeloRejilla* modelo_;
  std::vector<QWidget*> reparto_;
  QPoint pulsado_;
  int cambios_ = 0;
  bool arrastre_ = false;
  bool arrastrable_ = false;  // the button was pressed with shift held
  bool pendiente_ = false;    // the recordset has moved or changed since the last painting
  bool sincronizando_ = false;
  bool sinAnchos_ = true;
  bool recortando_ = false;
  bool restoPorLeer_ = true;
};
