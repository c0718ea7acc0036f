#!/usr/bin/env bash
echo todo
