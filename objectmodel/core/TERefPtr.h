#pragma once

#include <cstddef>
#include <utility>

namespace TZObjects {

// Intrusive smart pointer over TERefBase-derived objects: copying adds a
// reference, destruction releases one.
template <class T>
class TERefPtr
{
public:
    TERefPtr() = default;
    TERefPtr(std::nullptr_t) {}
    TERefPtr(T* p) : mPtr(p) { if (mPtr) mPtr->AddRef(); }
    TERefPtr(const TERefPtr& other) : TERefPtr(other.mPtr) {}
    TERefPtr(TERefPtr&& other) noexcept : mPtr(other.mPtr) { other.mPtr = nullptr; }
    template <class U>
    TERefPtr(const TERefPtr<U>& other) : TERefPtr(other.get()) {}
    template <class U>
    TERefPtr(TERefPtr<U>&& other) noexcept : mPtr(other.detach()) {}
    ~TERefPtr() { if (mPtr) mPtr->Release(); }

    TERefPtr& operator=(TERefPtr other) noexcept
    {
        std::swap(mPtr, other.mPtr);
        return *this;
    }

    T* get() const { return mPtr; }
    T* operator->() const { return mPtr; }
    T& operator*() const { return *mPtr; }
    explicit operator bool() const { return mPtr != nullptr; }
    bool operator!() const { return mPtr == nullptr; }

    void reset(T* p = nullptr) { *this = TERefPtr(p); }

    // Gives up ownership without releasing; the caller takes the reference.
    T* detach()
    {
        T* p = mPtr;
        mPtr = nullptr;
        return p;
    }

    template <class U>
    TERefPtr<U> cast() const { return TERefPtr<U>(dynamic_cast<U*>(mPtr)); }

private:
    T* mPtr = nullptr;
};

template <class T, class U>
bool operator==(const TERefPtr<T>& a, const TERefPtr<U>& b) { return a.get() == b.get(); }
template <class T, class U>
bool operator!=(const TERefPtr<T>& a, const TERefPtr<U>& b) { return a.get() != b.get(); }
template <class T>
bool operator==(const TERefPtr<T>& a, std::nullptr_t) { return !a; }
template <class T>
bool operator!=(const TERefPtr<T>& a, std::nullptr_t) { return bool(a); }

template <class T, class... Args>
TERefPtr<T> MakeRef(Args&&... args) { return TERefPtr<T>(new T(std::forward<Args>(args)...)); }

} // namespace TZObjects
