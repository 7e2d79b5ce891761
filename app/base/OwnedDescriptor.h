// A file descriptor that is closed with its owner.
#pragma once

#include <utility>

#include <unistd.h>

class OwnedDescriptor {
public:
    explicit OwnedDescriptor(int opened = -1) : number(opened) {}
    ~OwnedDescriptor() { close(); }
    OwnedDescriptor(OwnedDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    OwnedDescriptor& operator=(OwnedDescriptor&& other) noexcept
    {
        if (this != &other) {
            close();
            number = std::exchange(other.number, -1);
        }
        return *this;
    }

    int get() const { return number; }
    bool isOpen() const { return number >= 0; }
    void close()
    {
        if (isOpen()) {
            ::close(std::exchange(number, -1));
        }
    }

private:
    int number;
};
