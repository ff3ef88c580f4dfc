#pragma once

class QObject;

namespace korvantis {

class MonitorStore;

/// Lets the models behind a screen that nobody sees rest: taken off their store, they keep their
/// words and hear of no tick. Awake again they word what is true then, before the first drawing.
/// A model is an object of ours without a picture of its own that has a property `store`. Main
/// thread.
namespace RestingModels {

/// Takes every model below `screen` off the store.
void rest(QObject& screen);

/// Gives every model below `screen` the store again.
void wake(QObject& screen, MonitorStore& store);

}  // namespace RestingModels

}  // namespace korvantis
