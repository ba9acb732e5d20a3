#include "fobrob/general.h"

#include "fobrob/output.h"

void printUsage()
{
    printLine(
        R"(  __ __    _____       _   _   _                 )"
        "\n"
        R"( /  \\ \  / / __| ___ | |_| |_(_)_ _   __ _  ___ )"
        "\n"
        R"(| || |\ \/ /\ \_ / _ \|  _|  _| | ' \ / _` |/ __|)"
        "\n"
        R"(| || | \  /  \_ \|  _/| |_| |_| | || ||(_| |\__ \)"
        "\n"
        R"( \_\_\  \/  |___/\___| \__|\__|_|_||_|\__, ||___/)"
        "\n"
        R"(                        Console edition|___/     )"
        "\n"
        "\n"
        "This is the console version of QVSettings and offers almost the same setting opportunities.          \n"
        "It has been optimized for units with no display; some settings are therefore not available.          \n"
        "The command-line options are passed to the application as Long Options.\n"
        "\n"
        "Use the following style: --category=argument --option=argument --option=argument\n"
        "Always begin with a category! Some categories may have one or more options.\n"
        "\n"
        "To get specific category information: --category --help\n"
        "To get information about the available categories, arguments and options: --list\n"
        "To get Fobrob version: -v\n"
        "\n"
        "A few examples how Fobrob can be used:\n"
        "Ex1: ./Fobrob --version\n"
        "Ex2: ./Fobrob --advanced --help \n"
        "Ex3: ./Fobrob --can=can1\n"
        "Ex4: ./Fobrob --heater --temperature=5\n"
        "Ex5: ./Fobrob --power=current --can=Enable\n");
}
