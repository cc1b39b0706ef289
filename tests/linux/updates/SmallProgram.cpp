// SPDX-License-Identifier: MIT
// A program whose version is what was appended to its file. It prints it.
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

int main(int, char** argv) {
    std::ifstream file(argv[0], std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    std::cout << bytes.substr(bytes.rfind('=') + 1);
}
