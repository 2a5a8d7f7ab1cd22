#pragma once

#include <unistd.h>
#include <utility>

// An open file descriptor, or none; closed with its owner.
class FileHandle {
public:
    FileHandle() = default;
    explicit FileHandle(int number) : m_number(number) {}
    FileHandle(FileHandle &&other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    FileHandle &operator=(FileHandle &&other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~FileHandle()
    {
        if (isOpen())
            ::close(m_number);
    }

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }
    // Some file systems tell a full disk only here.
    bool close() { return ::close(std::exchange(m_number, -1)) == 0; }

private:
    int m_number = -1;
};
