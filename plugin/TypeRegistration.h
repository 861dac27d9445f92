// SPDX-License-Identifier: MIT
#pragma once

#include <qqml.h>

#include <type_traits>

// What the QML engine makes of such a type. It is the most derived class, and the only one that can take the object
// out of everybody's reach, the render thread's too, before the first destructor changes what virtual calls mean.
// Otherwise as Qt's own: the engine allocates more than the object, so the memory is given back without a size.
#define VORLIX_WITHDRAWING_ELEMENT(T) \
  template <> \
  class QQmlPrivate::QQmlElement<T> final : public T \
  { \
public: \
    static constexpr bool withdraws = true; \
    ~QQmlElement() override \
    { \
      withdraw(); \
      QQmlPrivate::qdeclarativeelement_destructor(this); \
    } \
    static void operator delete(void *memory) { ::operator delete(memory); } \
    static void operator delete(void *, void *) {} \
  };

/// Whether the engine's object of type T withdraws when it is destroyed.
template <class T, class = void>
struct Withdraws : std::false_type
{
};
template <class T>
struct Withdraws<T, std::enable_if_t<QQmlPrivate::QQmlElement<T>::withdraws>> : std::true_type
{
};

/// Registers T, version 1.0.
template <class T>
void registerType(const char *uri, const char *name)
{
    static_assert(Withdraws<T>::value, "the type must withdraw() when it is destroyed: VORLIX_WITHDRAWING_ELEMENT");
    qmlRegisterType<T>(uri, 1, 0, name);
}
