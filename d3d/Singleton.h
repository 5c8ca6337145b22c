// A base that keeps the one instance of a class in a process-wide pointer:
// set by the constructor, cleared by the destructor.
#pragma once

template <class T> class Singleton {
  public:
    static T* Instance() { return instance; }

    Singleton(const Singleton&) = delete;
    Singleton& operator=(const Singleton&) = delete;

  protected:
    Singleton() { instance = static_cast<T*>(this); }
    ~Singleton() {
        if (instance == static_cast<T*>(this)) instance = nullptr;
    }

  private:
    static inline T* instance = nullptr;
};
