// std::atomic_ref, which some C++ libraries lack (libc++ before version 19).
#pragma once

#include <atomic>

namespace genutil {

#if defined(__cpp_lib_atomic_ref)

template <class T>
using AtomicRef = std::atomic_ref<T>;

#else

template <class T>
class AtomicRef {
  public:
    explicit AtomicRef(T& object) : m_object(&object) {}

    T load(std::memory_order order = std::memory_order_seq_cst) const {
        return __atomic_load_n(m_object, static_cast<int>(order));
    }
    void store(T value, std::memory_order order = std::memory_order_seq_cst) const {
        __atomic_store_n(m_object, value, static_cast<int>(order));
    }
    T fetch_add(T value, std::memory_order order = std::memory_order_seq_cst) const {
        return __atomic_fetch_add(m_object, value, static_cast<int>(order));
    }

  private:
    T* m_object;
};

#endif

}  // namespace genutil
