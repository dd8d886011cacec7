// A window of Qt widgets for the tests: a form with secrets, a table, a tree, tabs and menus.

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QWidget* makeForm(QWidget* parent) {
  auto* form = new QGroupBox("Account", parent);
  auto* layout = new QFormLayout(form);
  auto* user = new QLineEdit("joe", form);
  user->setPlaceholderText("Your user name");
  layout->addRow("User", user);
  for (const auto mode : {QLineEdit::Password, QLineEdit::NoEcho, QLineEdit::PasswordEchoOnEdit}) {
    auto* secret = new QLineEdit(QString("secret of mode %1").arg(mode), form);
    secret->setEchoMode(mode);
    layout->addRow("Secret", secret);
  }
  auto* remember = new QCheckBox("Remember me", form);
  remember->setChecked(true);
  layout->addRow(remember);
  layout->addRow(new QRadioButton("By mail", form));
  auto* country = new QComboBox(form);
  country->addItems({"Austria", "Belgium"});
  layout->addRow("Country", country);
  auto* age = new QSpinBox(form);
  age->setValue(42);
  layout->addRow("Age", age);
  auto* volume = new QSlider(Qt::Horizontal, form);
  volume->setAccessibleName("Volume");
  volume->setValue(30);
  layout->addRow(volume);
  auto* progress = new QProgressBar(form);
  progress->setValue(70);
  layout->addRow("Progress", progress);
  auto* unavailable = new QPushButton("Unavailable", form);
  unavailable->setEnabled(false);
  layout->addRow(unavailable);
  auto* hidden = new QLabel("never shown", form);
  layout->addRow(hidden);
  hidden->hide();
  user->setFocus();
  return form;
}

QWidget* makeTable(QWidget* parent) {
  auto* table = new QTableWidget(2, 2, parent);
  table->setHorizontalHeaderLabels({"Name", "City"});
  const char* texts[2][2] = {{"Ann", "Vienna"}, {"Bob", "Bruges"}};
  for (int row = 0; row < 2; ++row) {
    for (int column = 0; column < 2; ++column) table->setItem(row, column, new QTableWidgetItem(texts[row][column]));
  }
  return table;
}

QWidget* makeTree(QWidget* parent) {
  auto* tree = new QTreeWidget(parent);
  tree->setHeaderLabel("Places");
  auto* home = new QTreeWidgetItem(tree, {"Home"});
  new QTreeWidgetItem(home, {"Letters"});
  home->setExpanded(true);
  return tree;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.setWindowTitle("Qt widgets");
  window.menuBar()->addMenu("File")->addAction("Open");
  auto* content = new QWidget(&window);
  auto* layout = new QVBoxLayout(content);
  layout->addWidget(makeForm(content));
  layout->addWidget(makeTable(content));
  layout->addWidget(makeTree(content));
  auto* note = new QPlainTextEdit(QString::fromUtf8("A note \U0001F600 of\ntwo lines"), content);
  note->setAccessibleName("Note");
  layout->addWidget(note);
  auto* tabs = new QTabWidget(content);
  tabs->addTab(new QLabel("on the first tab", tabs), "First tab");
  tabs->addTab(new QLabel("on the second tab", tabs), "Second tab");
  layout->addWidget(tabs);
  window.setCentralWidget(content);
  window.resize(700, 950);
  window.show();
  return QApplication::exec();
}
