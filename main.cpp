#include "Application.h"

int main(int argc, char **argv)
{
    return Application::main(argc, argv);
}
