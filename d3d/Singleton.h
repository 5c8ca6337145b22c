// A base that keeps the one instance of a class in a process-wide pointer:
// set by the constructor, cleared by the destructor.
#pragma once

template <class T> class Singleton {
  public:
    // The instance, once its construction has finished.
    static T* Instance() { return static_cast<T*>(instance); }

    Singleton(const Singleton&) = delete;
    Singleton& operator=(const Singleton&) = delete;

  protected:
    // The base is kept, not the derived object, which does not exist yet
    // while this constructor runs.
    Singleton() { instance = this; }
    ~Singleton() {
        if (instance == this) instance = nullptr;
    }

  private:
    static inline Singleton* instance = nullptr;
};
