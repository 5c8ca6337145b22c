// The top-level widget of the main window. It turns the keys and the close
// box of the window into the commands the dialog manager would send: Enter
// is command 1 (or the click of the push button that has the focus),
// Escape and closing are command 2.
#pragma once

#include <QDialog>
#include <functional>

class MainDialog : public QDialog {
  public:
    using CommandHandler = std::function<void(int id)>;
    explicit MainDialog(CommandHandler handler);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

  private:
    CommandHandler handler_;
};
