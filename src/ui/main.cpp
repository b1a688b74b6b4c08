#include "ui/application.h"

int main(int argc, char* argv[]) {
    return ampora::ui::RunApplication(argc, argv);
}
